#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Foreign texts in sentences of our own, where they must neither break a line nor turn the writing direction nor
/// drown the rest. Pure functions.
namespace kestrune::ReadableText {

/// text as well-formed UTF-8 with every control character visible: the picture of an ASCII one, U+FFFD for the others,
/// for marks that turn the writing direction and for bytes that are not UTF-8.
[[nodiscard]] std::string visible(std::string_view text);

/// text with at most limit characters (3 at least): "…" takes the place of its middle where it is longer.
[[nodiscard]] std::string elided(std::string_view text, std::size_t limit);

/// The name of an application or a process, visible and at most 200 characters long.
[[nodiscard]] std::string name(std::string_view text);

/// path like name(), with home as "~".
[[nodiscard]] std::string path(const std::string& path, const std::string& home);

/// "45 s", "12 min", "3 h 12 min", "2 d 4 h": the two largest units, cut off, never rounded up; a zero second one is
/// left out.
[[nodiscard]] std::string duration(std::int64_t seconds);

}  // namespace kestrune::ReadableText
