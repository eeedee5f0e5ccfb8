#include "update/VersionNumber.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Without leading zeros the longer number is the greater one.
std::strong_ordering comparedParts(const std::string& left, const std::string& right) {
    const auto lengths = left.size() <=> right.size();
    return lengths != std::strong_ordering::equal ? lengths : left.compare(right) <=> 0;
}

}  // namespace

std::optional<VersionNumber> VersionNumber::parse(std::string_view text) {
    std::vector<std::string> parts = split(text, '.');
    for (std::string& part : parts) {
        if (part.empty() || !std::all_of(part.begin(), part.end(), isDigit)) {
            return std::nullopt;
        }
        part.erase(0, std::min(part.find_first_not_of('0'), part.size()));
    }
    while (!parts.empty() && parts.back().empty()) {
        parts.pop_back();
    }
    return VersionNumber(std::move(parts));
}

std::strong_ordering VersionNumber::operator<=>(const VersionNumber& other) const {
    const std::string zero;
    for (std::size_t place = 0; place < std::max(m_parts.size(), other.m_parts.size()); ++place) {
        const auto order = comparedParts(place < m_parts.size() ? m_parts[place] : zero,
                                         place < other.m_parts.size() ? other.m_parts[place] : zero);
        if (order != std::strong_ordering::equal) {
            return order;
        }
    }
    return std::strong_ordering::equal;
}

}  // namespace kestrune
