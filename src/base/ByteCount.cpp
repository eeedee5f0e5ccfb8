#include "base/ByteCount.h"

#include <array>
#include <cmath>

#include "base/Localized.h"

namespace kestrune {

namespace {

struct Unit {
    const char* text;
    double bytes;
    int decimals;
};

constexpr std::array<Unit, 6> units{{
    {localizable("%1 KB"), 1e3, 0},
    {localizable("%1 MB"), 1e6, 1},
    {localizable("%1 GB"), 1e9, 2},
    {localizable("%1 TB"), 1e12, 2},
    {localizable("%1 PB"), 1e15, 2},
    {localizable("%1 EB"), 1e18, 2},
}};

// The nearest whole number of 10^-decimals parts of unit. Whole numbers keep the text free of the C locale.
std::int64_t parts(double magnitude, const Unit& unit) {
    return std::llround(magnitude / unit.bytes * std::pow(10.0, unit.decimals));
}

std::int64_t partsOfAThousand(const Unit& unit) {
    return std::llround(1000 * std::pow(10.0, unit.decimals));
}

std::string figure(std::int64_t parts, int decimals) {
    std::string digits = std::to_string(parts);
    if (decimals == 0) {
        return digits;
    }
    const auto places = static_cast<std::size_t>(decimals);
    digits.insert(0, digits.size() <= places ? places + 1 - digits.size() : 0, '0');
    const std::string whole = digits.substr(0, digits.size() - places);
    std::string fraction = digits.substr(digits.size() - places);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    // Translators: a number and its decimal places.
    return fraction.empty() ? whole : localized("%1.%2", {whole, fraction});
}

}  // namespace

std::string formatByteCount(std::int64_t bytes) {
    if (bytes == 0) {
        return localized("Zero KB");
    }
    const double magnitude = std::abs(static_cast<double>(bytes));
    const std::string sign = bytes < 0 ? "-" : "";
    if (magnitude < 1000) {
        const auto count = std::llround(magnitude);
        return localizedCount("%1 byte", "%1 bytes", count, {sign + std::to_string(count)});
    }
    // 999,999 bytes round to 1000 KB and so become 1 MB.
    std::size_t index = 0;
    while (index + 1 < units.size() && parts(magnitude, units[index]) >= partsOfAThousand(units[index])) {
        ++index;
    }
    const Unit& unit = units[index];
    return localized(unit.text, {sign + figure(parts(magnitude, unit), unit.decimals)});
}

}  // namespace kestrune
