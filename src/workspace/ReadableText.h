#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Foreign texts in sentences of our own, where they must neither break a line nor turn the writing direction nor
/// drown the rest. Pure functions.
namespace kestrune::ReadableText {

/// text as well-formed UTF-8 in which every character shows: the picture of an ASCII control character, U+FFFD for the
/// other ones, for marks that turn the writing direction, for characters that show nothing and for bytes that are not
/// UTF-8. White space stays.
[[nodiscard]] std::string visible(std::string_view text);

/// Whether text has a character of its own that shows, other than white space.
[[nodiscard]] bool hasVisible(std::string_view text);

/// What a process goes by, as it is: name, else the last component of executable, else "PID 5521"; the first of them
/// that has something visible.
[[nodiscard]] std::string processName(std::string_view name, std::string_view executable, std::int32_t pid);

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
