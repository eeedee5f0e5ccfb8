#include "platform/macos/ShownPrograms.h"

namespace kestrune {

namespace {

bool isPartOfFramework(const std::string& bundle) {
    return bundle.find(".framework/") != std::string::npos;
}

}  // namespace

void ShownPrograms::remember(const std::string& bundle, const std::string& name) {
    if (bundle.empty() || name.empty() || isPartOfFramework(bundle) ||
        (m_names.size() >= mostBundles && !m_names.contains(bundle))) {
        return;
    }
    std::set<std::string>& names = m_names[bundle];
    if (names.size() < mostNames) {
        names.insert(name);
    }
}

std::vector<std::string> ShownPrograms::namesOf(const std::string& executable) const {
    std::set<std::string> names;
    // Every folder around the executable may be a bundle, and a bundle may lie in another.
    for (std::size_t end = executable.size(); end != std::string::npos && end > 0;
         end = executable.rfind('/', end - 1)) {
        if (const auto found = m_names.find(executable.substr(0, end)); found != m_names.end()) {
            names.insert(found->second.begin(), found->second.end());
        }
    }
    return {names.begin(), names.end()};
}

}  // namespace kestrune
