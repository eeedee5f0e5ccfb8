#include "engine/AppProtection.h"

#include <algorithm>

#include "base/Text.h"
#include "engine/LowerCase.h"

namespace kestrune::AppProtection {

bool isProtected(std::string_view nameOrPath, const NameSet& alwaysKept) {
    const std::string lower = lowerCasedInAnyScript(nameOrPath);
    // A "/" at the end must not hide the name before it.
    const std::string base = lastPathComponent(std::string_view(lower).substr(0, lower.find_last_not_of('/') + 1));
    return std::any_of(protectedNames.begin(), protectedNames.end(),
                       [&base](std::string_view prefix) { return base.starts_with(prefix); }) ||
           alwaysKept.contains(lower) || alwaysKept.contains(base);
}

bool sparesApplication(const std::string& localizedName, const NameSet& alwaysKept) {
    return isProtected(localizedName, alwaysKept) || alwaysKept.contains(localizedName);
}

}  // namespace kestrune::AppProtection
