#pragma once

#include <functional>
#include <string>

namespace kestrune {

enum class NotificationAuthorization { authorized, provisional, ephemeral, notDetermined, denied };

/// The desktop's notification service. Nothing here blocks; answers arrive on the main thread. Main thread.
class NotificationCenter {
public:
    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;
    virtual ~NotificationCenter() = default;

    /// False when the program runs without an identity of its own (a test suite); it then must not notify.
    [[nodiscard]] virtual bool hasIdentity() const = 0;

    virtual void queryAuthorization(std::function<void(NotificationAuthorization)> answer) = 0;

    /// Asks for alerts and sounds.
    virtual void requestAuthorization(std::function<void(bool granted)> answer) = 0;

    /// Shows one notification at once, with the default sound; it never replaces an earlier one. Both texts are plain.
    virtual void deliver(const std::string& title, const std::string& body) = 0;

    /// Plays the system sound; false when there is no such sound or it cannot be played.
    virtual bool playSound(const std::string& name) = 0;

    virtual void beep() = 0;
};

}  // namespace kestrune
