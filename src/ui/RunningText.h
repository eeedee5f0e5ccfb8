#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

struct RunningItem;

/// Words and figures about a running process.
namespace RunningText {

/// What the process goes by on the screen; there is something to see in it.
[[nodiscard]] QString name(const RunningItem& item);

/// "3,842 MB".
[[nodiscard]] QString memory(std::int64_t megabytes);

/// "24.1% CPU" from the share as the system's listing prints it; empty where it prints none.
[[nodiscard]] QString cpu(const std::string& percent);

/// The endpoints as they are listed, with ", " between them.
[[nodiscard]] QString ports(const std::vector<std::string>& listeners);

/// "PID 5521".
[[nodiscard]] QString identifier(std::int32_t pid);

}  // namespace RunningText

}  // namespace kestrune
