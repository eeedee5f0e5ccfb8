#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// The argument vector for starting executable with arguments, as posix_spawn(2) takes it, which writes to none of it:
/// the program's name first, a null pointer last. It points into both, so they must outlive it. Nothing when one of the
/// texts holds a NUL byte: it would end there, and something else would start than was asked for. Any thread.
[[nodiscard]] std::optional<std::vector<char*>> argumentVector(const std::string& executable,
                                                               const std::vector<std::string>& arguments);

}  // namespace kestrune
