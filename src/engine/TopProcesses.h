#pragma once

#include <string_view>
#include <vector>

#include "engine/TelemetryRecords.h"

namespace kestrune::TopProcesses {

/// The processes in output (a header, then percent of memory and name a line), largest first; equal ones keep their
/// order. A name ends at its first space. Lines that do not have the form are left out. Pure.
[[nodiscard]] std::vector<TopProcess> parse(std::string_view output);

}  // namespace kestrune::TopProcesses
