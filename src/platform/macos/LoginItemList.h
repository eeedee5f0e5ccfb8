#pragma once

namespace kestrune {

/// The system's own list of programs to start at login, as far as it concerns this program. Main thread.
class LoginItemList {
public:
    LoginItemList() = default;
    LoginItemList(const LoginItemList&) = delete;
    LoginItemList& operator=(const LoginItemList&) = delete;
    virtual ~LoginItemList() = default;

    /// Whether the program is on the list and the user lets it start.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// Puts the program on the list or takes it off; false when the system refused, or has no such list.
    virtual bool setRegistered(bool on) = 0;
};

}  // namespace kestrune
