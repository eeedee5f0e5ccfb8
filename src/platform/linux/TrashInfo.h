#pragma once

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace kestrune {

/// What the name of a restore record ends in.
inline constexpr std::string_view trashInfoSuffix = ".trashinfo";

/// bytes as a URL path spells them (RFC 2396): letters, digits, "-._~" and "/" stay, every other byte becomes "%XX".
[[nodiscard]] std::string percentEncoded(std::string_view bytes);

/// The text of a restore record (freedesktop.org Trash 1.0). originalPath is absolute in the home Trash and relative to
/// the top directory elsewhere; deleted is local time.
[[nodiscard]] std::string trashInfoText(std::string_view originalPath, const std::tm& deleted);

/// Whether text is a whole restore record of an item that lay at originalPath, whatever its date.
[[nodiscard]] bool isTrashInfoOf(std::string_view text, std::string_view originalPath);

/// What a restore record says of the place its item came from, as bytes. Nothing unless text begins as a record does
/// and has one line with that key, whole, in the spelling of percentEncoded() or a looser one: programs disagree about
/// which of two counts and about broken escapes, so such a record names no place.
[[nodiscard]] std::optional<std::string> originalPathIn(std::string_view text);

/// The name to try for an item called leaf: leaf itself at attempt 0, then "leaf.2", "leaf.3" … A name that would be
/// longer than longestName bytes once trashInfoSuffix is added is cut, between characters where it is UTF-8.
[[nodiscard]] std::string trashName(std::string_view leaf, unsigned attempt, std::size_t longestName);

}  // namespace kestrune
