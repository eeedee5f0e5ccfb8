#pragma once

#include <optional>

#include "platform/MemoryPressureSource.h"
#include "platform/macos/MacDispatchSource.h"

namespace kestrune {

/// The kernel's own events; nothing is told before the first change. Main thread.
class MacMemoryPressure final : public MemoryPressureSource {
public:
    void start(Handler handler) override;

private:
    std::optional<MacDispatchSource> m_source;
};

}  // namespace kestrune
