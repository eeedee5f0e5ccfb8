#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/NotificationCenter.h"

namespace kestrune {

/// UNUserNotificationCenter, which there is only for a program with a bundle identifier: without one it is never
/// touched, because asking for it ends the program, and notifications count as denied. Main thread.
class MacNotificationCenter final : public NotificationCenter {
public:
    /// Has notifications shown while the program is in front, too.
    MacNotificationCenter();
    ~MacNotificationCenter() override;

    [[nodiscard]] bool hasIdentity() const override;
    void queryAuthorization(std::function<void(NotificationAuthorization)> answer) override;
    void requestAuthorization(std::function<void(bool granted)> answer) override;
    void deliver(const std::string& title, const std::string& body) override;

    /// A sound that still plays begins again.
    bool playSound(const std::string& name) override;

    void beep() override;

private:
    struct Objects;

    /// Calls answer with value from the main queue, unless this object is gone by then. Any thread.
    template <typename Value>
    static void post(std::weak_ptr<Objects> objects, std::function<void(Value)> answer, Value value);

    const std::shared_ptr<Objects> m_objects;
};

}  // namespace kestrune
