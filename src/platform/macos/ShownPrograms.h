#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kestrune {

/// Under which names bundled applications showed themselves so far, so that what they start besides goes by their
/// names too. An application without a bundle, or with one that is part of a framework, is run by an interpreter,
/// which runs others as well: it is left out. Bounded; one thread.
class ShownPrograms final {
public:
    /// bundle is the path of the application's bundle, name what it is shown as.
    void remember(const std::string& bundle, const std::string& name);

    /// The names of the bundles that executable is, or lies in; most have none.
    [[nodiscard]] std::vector<std::string> namesOf(const std::string& executable) const;

private:
    static constexpr std::size_t mostBundles = 4096;
    static constexpr std::size_t mostNames = 16;

    std::map<std::string, std::set<std::string>> m_names;  ///< by bundle
};

}  // namespace kestrune
