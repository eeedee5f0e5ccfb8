#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrune {

/// What matters of an https address that a stranger gave.
struct WebAddress {
    std::string host;      ///< a name, an IPv4 address, or an IPv6 address in brackets
    std::string fileName;  ///< the last component of the path, as it stands there; may be empty

    bool operator==(const WebAddress&) const = default;

    /// Nothing unless text is an absolute https address of at most 2,048 bytes with a host and without user
    /// information, written in the characters that RFC 3986 allows: no blank, no control character, no letter outside
    /// of ASCII.
    [[nodiscard]] static std::optional<WebAddress> parse(std::string_view text);
};

}  // namespace kestrune
