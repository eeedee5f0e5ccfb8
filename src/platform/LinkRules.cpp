#include "platform/LinkRules.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Text.h"

namespace kestrune::LinkRules {

namespace {

bool isPageName(const std::string& name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-';
    });
}

}  // namespace

bool isWebAddress(const std::string& address) {
    constexpr std::string_view scheme = "https://";
    return address.starts_with(scheme) && address.size() > scheme.size() &&
           std::all_of(address.begin(), address.end(), [](char c) { return c > ' ' && c != '\x7f'; });
}

std::optional<std::string> helpPage(const std::string& folder, const std::string& name) {
    if (!isPageName(name)) {
        return std::nullopt;
    }
    std::string path = standardizedPath(folder + "/" + name + ".html");
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) ? std::optional(std::move(path)) : std::nullopt;
}

}  // namespace kestrune::LinkRules
