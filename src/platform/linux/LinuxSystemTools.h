#pragma once

#include "platform/SystemTools.h"

namespace kestrune {

/// The tools by the paths they have everywhere. A system that lacks one answers the run with "could not be started":
/// without /usr/bin/osascript the second, privileged attempt of a command fails, and without /usr/bin/xcrun there are
/// no simulators to delete.
class LinuxSystemTools final : public SystemTools {
public:
    [[nodiscard]] ToolCommand diskFree() const override { return {"/bin/df", {"-k", "/"}}; }

    [[nodiscard]] ToolCommand deleteUnavailableSimulators() const override {
        return {"/usr/bin/xcrun", {"simctl", "delete", "unavailable"}};
    }

    [[nodiscard]] ToolCommand runScript(const std::string& script) const override {
        return {"/usr/bin/osascript", {"-e", script}};
    }
};

}  // namespace kestrune
