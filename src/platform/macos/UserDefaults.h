#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "base/Clock.h"

namespace kestrune {

/// Bytes that are no text for the system.
struct DefaultsBytes {
    std::string bytes;

    bool operator==(const DefaultsBytes&) const = default;
};

/// One element of a list; std::monostate for one of any other type.
using DefaultsElement = std::variant<std::monostate, double, std::string, DefaultsBytes>;
using DefaultsList = std::vector<DefaultsElement>;

/// One value of a property list; std::monostate for none, or one of any other type. A text is UTF-8.
using DefaultsValue = std::variant<std::monostate, bool, double, WallTime, DefaultsList>;

/// The system's store of settings, as plain values. Any thread.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual DefaultsValue value(const std::string& key) const = 0;

    virtual void setValue(const std::string& key, const DefaultsValue& value) = 0;

    /// Waits until everything set so far is saved; false when it could not be.
    [[nodiscard]] virtual bool synchronize() = 0;

    /// Calls changed whenever the value of key changes, whoever changes it, for as long as this object lives; on the
    /// thread of the change. A key has no dots.
    virtual void watch(const std::string& key, std::function<void()> changed) = 0;
};

}  // namespace kestrune
