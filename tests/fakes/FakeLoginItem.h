#pragma once

#include <functional>

#include "platform/LoginItem.h"

namespace kestrune {

/// A desktop's list of programs to start, of one entry.
class FakeLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isRegistered() const override { return registered; }

    bool setRegistered(bool on) override {
        ++changes;
        if (whenChanging) {
            whenChanging();
        }
        if (refuses) {
            return false;
        }
        registered = on;
        return true;
    }

    [[nodiscard]] bool isAgentInstalled() const override { return agentInstalled; }

    bool setAgentInstalled(bool on) override {
        ++changes;
        if (agentFails) {
            return false;
        }
        agentInstalled = on;
        return true;
    }

    bool registered = false;
    bool agentInstalled = false;
    bool refuses = false;  ///< the list cannot be changed
    bool agentFails = false;
    int changes = 0;
    std::function<void()> whenChanging = {};  ///< called when the list is to change, before it does
};

}  // namespace kestrune
