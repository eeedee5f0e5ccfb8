#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// True when text is well-formed UTF-8 by RFC 3629: no overlong form, no surrogate, nothing above U+10FFFF.
[[nodiscard]] bool isValidUtf8(std::string_view text);

/// ASCII letters in lower case; every other byte as it is.
[[nodiscard]] std::string lowerCased(std::string_view text);

/// The first character of text, which is not empty; a single byte where text does not begin with well-formed UTF-8.
[[nodiscard]] std::string_view firstCharacter(std::string_view text);

/// The code point of one character of well-formed UTF-8.
[[nodiscard]] char32_t codePoint(std::string_view character);

/// Number of characters (code points) of text; a byte that is not part of well-formed UTF-8 counts as one.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// The pieces between separators, empty ones included; text without a separator is its own only piece.
[[nodiscard]] std::vector<std::string> split(std::string_view text, char separator);

/// The pieces between runs of ASCII white space; no piece is empty.
[[nodiscard]] std::vector<std::string> splitAtWhiteSpace(std::string_view text);

[[nodiscard]] std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

/// What follows the last "/" of path; path itself when it has none.
[[nodiscard]] std::string lastPathComponent(std::string_view path);

/// path in the plain form that paths are compared in: absolute paths lose ".", "..", empty components and a trailing
/// "/" by looking at the text alone; nothing on disk is read.
[[nodiscard]] std::string standardizedPath(std::string_view path);

}  // namespace kestrune
