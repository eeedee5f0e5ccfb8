#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/NotificationCenter.h"

class QObject;

namespace kestrune {

/// Notifications through org.freedesktop.Notifications on the session bus. A desktop without that service counts as
/// one that denies them. Main thread.
class LinuxNotificationCenter final : public NotificationCenter {
public:
    explicit LinuxNotificationCenter(bool hasIdentity);
    ~LinuxNotificationCenter() override;

    [[nodiscard]] bool hasIdentity() const override { return m_hasIdentity; }

    void queryAuthorization(std::function<void(NotificationAuthorization)> answer) override;
    void requestAuthorization(std::function<void(bool granted)> answer) override;
    void deliver(const std::string& title, const std::string& body) override;

    /// Always false: the desktop has no service that plays a sound by name.
    bool playSound(const std::string& name) override;

    void beep() override;

private:
    void show(const std::string& title, const std::string& body) const;

    const bool m_hasIdentity;
    std::optional<bool> m_bodyMarkup;    ///< whether the server reads markup in a body; nothing until it answered
    std::unique_ptr<QObject> m_context;  ///< answers that arrive after it is gone are dropped
};

}  // namespace kestrune
