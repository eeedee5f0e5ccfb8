#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "engine/TelemetryRecords.h"
#include "platform/ProcessListing.h"

/// Processes as the probe prints them. Bytes that are no text are escaped.
namespace kestrune::probe {

/// What every listing tells of a process: pid, rss in kilobytes, cpu and command.
[[nodiscard]] nlohmann::ordered_json jsonOf(const ProcessRecord& process);

/// The endpoints by pid.
[[nodiscard]] nlohmann::ordered_json jsonOf(const ListeningPorts& listeners);

[[nodiscard]] nlohmann::ordered_json jsonOf(const std::vector<ProcessRecord>& processes);
[[nodiscard]] nlohmann::ordered_json jsonOf(const std::vector<TopProcess>& processes);

/// Each process with its start time and its endpoints.
[[nodiscard]] nlohmann::ordered_json jsonOf(const ProcessSnapshot& snapshot);

}  // namespace kestrune::probe
