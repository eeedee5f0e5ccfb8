#pragma once

#include <string>

namespace kestrune {

/// Whether this user's X server for guests of another display system runs. Connecting to it would start it where it is
/// started on demand. Reads about each of the user's processes: some 40 ms for 4000 of them. Any thread.
[[nodiscard]] bool guestServerRuns(const std::string& procRoot = "/proc");

}  // namespace kestrune
