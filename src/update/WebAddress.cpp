#include "update/WebAddress.h"

#include <algorithm>
#include <cstdint>

#include "base/Text.h"
#include "base/WholeNumber.h"

namespace kestrune {

namespace {

constexpr std::string_view scheme = "https://";
constexpr std::size_t longest = 2048;

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// RFC 3986: what may follow the scheme, the escape "%" included.
bool mayStandInAddress(char c) {
    constexpr std::string_view marks = "-._~:/?#[]@!$&'()*+,;=%";
    return isLetterOrDigit(c) || marks.find(c) != std::string_view::npos;
}

bool isHostName(std::string_view host) {
    return !host.empty() && host.front() != '.' && host.find("..") == std::string_view::npos &&
           std::any_of(host.begin(), host.end(), isLetterOrDigit) &&
           std::all_of(host.begin(), host.end(), [](char c) { return isLetterOrDigit(c) || c == '-' || c == '.'; });
}

bool isBracketedAddress(std::string_view host) {
    constexpr std::string_view characters = "0123456789abcdefABCDEF:.";
    return host.size() > 3 && host.front() == '[' && host.back() == ']' &&
           host.find_first_not_of(characters, 1) == host.size() - 1 && host.find(':') != std::string_view::npos;
}

bool isPort(std::string_view text) {
    const auto number = wholeNumber<std::uint16_t>(text);
    return number && *number > 0;
}

/// The host of authority; nothing when it has user information, an impossible port, or none.
std::optional<std::string> hostOf(std::string_view authority) {
    const std::size_t bracket = authority.rfind(']');
    const std::size_t colon = authority.find(':', bracket == std::string_view::npos ? 0 : bracket);
    const std::string_view host = authority.substr(0, colon);
    if (colon != std::string_view::npos && !isPort(authority.substr(colon + 1))) {
        return std::nullopt;
    }
    return isHostName(host) || isBracketedAddress(host) ? std::optional(std::string(host)) : std::nullopt;
}

}  // namespace

std::optional<WebAddress> WebAddress::parse(std::string_view text) {
    if (text.size() > longest || lowerCased(text.substr(0, scheme.size())) != scheme ||
        !std::all_of(text.begin(), text.end(), mayStandInAddress)) {
        return std::nullopt;
    }
    const std::string_view rest = text.substr(scheme.size());
    const std::size_t authorityEnd = std::min(rest.find_first_of("/?#"), rest.size());
    const auto host = hostOf(rest.substr(0, authorityEnd));
    if (!host) {
        return std::nullopt;
    }
    const std::string_view afterHost = rest.substr(authorityEnd);
    const std::string_view path = afterHost.substr(0, afterHost.find_first_of("?#"));
    return WebAddress{*host, lastPathComponent(path)};
}

}  // namespace kestrune
