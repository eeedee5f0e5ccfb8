#include "engine/AppProtection.h"

#include <algorithm>

#include "base/Text.h"
#include "engine/LowerCase.h"

namespace kestrune::AppProtection {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

bool isProtected(std::string_view nameOrPath, const std::vector<std::string>& alwaysKept) {
    const std::string lower = lowerCasedInAnyScript(nameOrPath);
    // A "/" at the end must not hide the name before it.
    const std::string base = lastPathComponent(std::string_view(lower).substr(0, lower.find_last_not_of('/') + 1));
    return std::any_of(protectedNames.begin(), protectedNames.end(),
                       [&base](std::string_view prefix) { return base.starts_with(prefix); }) ||
           contains(alwaysKept, lower) || contains(alwaysKept, base);
}

bool sparesApplication(const std::string& localizedName, const std::vector<std::string>& alwaysKept) {
    return isProtected(localizedName, alwaysKept) || contains(alwaysKept, localizedName);
}

}  // namespace kestrune::AppProtection
