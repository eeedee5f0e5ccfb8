#pragma once

#include <utility>

#include "platform/MemoryPressureSource.h"

namespace kestrune {

/// Tells the levels the test sends.
class FakeMemoryPressureSource final : public MemoryPressureSource {
public:
    void start(Handler handler) override { m_handler = std::move(handler); }

    [[nodiscard]] bool started() const { return m_handler != nullptr; }

    /// Only after start.
    void send(const PressureLevels& levels) const { m_handler(levels); }

private:
    Handler m_handler;
};

}  // namespace kestrune
