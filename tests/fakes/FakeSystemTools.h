#pragma once

#include "platform/SystemTools.h"

namespace kestrune {

/// The tools at the places the test names.
class FakeSystemTools final : public SystemTools {
public:
    [[nodiscard]] ToolCommand diskFree() const override { return diskFreeCommand; }

    [[nodiscard]] ToolCommand deleteUnavailableSimulators() const override { return simulatorsCommand; }

    [[nodiscard]] ToolCommand runScript(const std::string& script) const override {
        return {scriptExecutable, {"-e", script}};
    }

    ToolCommand diskFreeCommand{"/bin/df", {"-k", "/"}};
    ToolCommand simulatorsCommand{"/usr/bin/xcrun", {"simctl", "delete", "unavailable"}};
    std::string scriptExecutable = "/usr/bin/osascript";
};

}  // namespace kestrune
