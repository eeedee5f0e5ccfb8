#include "platform/PreferenceSuite.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace kestrune::PreferenceSuite {

namespace {

constexpr std::size_t nameAtMost = 64;
constexpr const char* standardName = "preferences";

bool isPlainCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '.' || character == '-' || character == '_';
}

}  // namespace

bool isPlainName(const std::string& name) {
    return !name.empty() && name.size() <= nameAtMost && name.front() != '.' && name != standardName &&
           std::all_of(name.begin(), name.end(), isPlainCharacter);
}

std::optional<std::string> fromEnvironment() {
    const char* name = std::getenv("KESTRUNE_TEST_SUITE");
    if (name == nullptr) {
        return std::nullopt;
    }
    if (!isPlainName(name)) {
        refuse();
    }
    return name;
}

void refuse() {
    static_cast<void>(
        std::fputs("kestrune: KESTRUNE_TEST_SUITE is not the plain name of a preference suite. Use letters, digits, "
                   "\".\", \"-\" and \"_\", or unset it.\n",
                   stderr));
    std::exit(EXIT_FAILURE);
}

}  // namespace kestrune::PreferenceSuite
