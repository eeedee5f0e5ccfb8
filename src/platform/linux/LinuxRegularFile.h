#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kestrune {

/// The first atMost bytes of a regular file. Nothing when it cannot be read or is none: a FIFO or a device in its place
/// is not waited for. Any thread.
[[nodiscard]] std::optional<std::string> readRegularFile(const std::string& path, std::size_t atMost);

}  // namespace kestrune
