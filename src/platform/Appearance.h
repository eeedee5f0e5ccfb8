#pragma once

#include <functional>

namespace kestrune {

/// What the desktop asks of every window.
struct AppearanceSettings {
    bool dark = false;
    bool reduceMotion = false;

    bool operator==(const AppearanceSettings&) const = default;
};

class Appearance {
public:
    using Handler = std::function<void(AppearanceSettings)>;

    Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    virtual ~Appearance() = default;

    /// Calls handler on the main thread with the desktop's choice once it is known, and whenever it changes. Never
    /// calls it where the desktop does not say. Returns at once. Main thread, once.
    virtual void start(Handler handler) = 0;
};

}  // namespace kestrune
