#pragma once

#include <utility>

#include "platform/Appearance.h"

namespace kestrune {

/// Tells the choices the test sends.
class FakeAppearance final : public Appearance {
public:
    void start(Handler handler) override { m_handler = std::move(handler); }

    [[nodiscard]] bool started() const { return m_handler != nullptr; }

    /// Only after start.
    void send(const AppearanceSettings& settings) const { m_handler(settings); }

private:
    Handler m_handler;
};

}  // namespace kestrune
