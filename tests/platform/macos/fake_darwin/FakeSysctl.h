#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kestrune {

/// What the stand-ins for sysctl and sysctlbyname answer: the bytes that belong to a name; a name that is not there is
/// an error. One for all tests: reset before each.
struct FakeSysctl {
    std::map<std::string, std::string> byName;
    std::map<std::vector<int>, std::string> byNumbers;
    std::function<void()> onNumbers;  ///< when not empty, called after each answer to sysctl

    static FakeSysctl& state();
    static void reset();
};

}  // namespace kestrune
