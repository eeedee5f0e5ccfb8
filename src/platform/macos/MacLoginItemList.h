#pragma once

#include "platform/macos/LoginItemList.h"

namespace kestrune {

/// SMAppService's main app service, which exists from macOS 13 on.
class MacLoginItemList final : public LoginItemList {
public:
    /// A program that the user still has to allow in System Settings is not enabled.
    [[nodiscard]] bool isEnabled() const override;

    bool setRegistered(bool on) override;
};

}  // namespace kestrune
