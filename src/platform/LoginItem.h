#pragma once

namespace kestrune {

/// Starting this program when the user logs in: the system's own list of such programs, and an agent as the fallback.
/// Nothing here blocks. Main thread.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    /// Whether the system's list names this program and has it switched on.
    [[nodiscard]] virtual bool isRegistered() const = 0;

    /// Puts the program on the list or takes it off. False when the system refused; nothing has changed then.
    virtual bool setRegistered(bool on) = 0;

    /// Whether the fallback agent is there.
    [[nodiscard]] virtual bool isAgentInstalled() const = 0;

    /// Lays the fallback agent down or takes it away. False when that failed.
    virtual bool setAgentInstalled(bool on) = 0;
};

}  // namespace kestrune
