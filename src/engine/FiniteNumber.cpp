#include "engine/FiniteNumber.h"

#include <locale>
#include <sstream>

namespace kestrune {

// A stream of the classic locale, because strtod follows the user's locale and the standard library of one of our
// systems has no from_chars for double.
std::optional<double> finiteNumber(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> std::noskipws >> value;
    const bool whole = !stream.fail() && stream.peek() == std::istringstream::traits_type::eof();
    return whole ? std::optional(value) : std::nullopt;
}

}  // namespace kestrune
