#pragma once

#include <cstdint>
#include <string>

namespace kestrune {

/// bytes as a file manager shows them: decimal units (1 KB = 1000 bytes), whole KB, up to one decimal for MB and two
/// from GB on, trailing zeros dropped: "Zero KB", "1 byte", "999 bytes", "12 KB", "348 MB", "18.42 GB".
[[nodiscard]] std::string formatByteCount(std::int64_t bytes);

}  // namespace kestrune
