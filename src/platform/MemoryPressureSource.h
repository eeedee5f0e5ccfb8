#pragma once

#include <functional>

namespace kestrune {

/// The levels one pressure event carries; several may be set.
struct PressureLevels {
    bool normal = false;
    bool warning = false;
    bool critical = false;

    bool operator==(const PressureLevels&) const = default;
};

/// Tells how hard the system looks for memory.
class MemoryPressureSource {
public:
    using Handler = std::function<void(PressureLevels)>;

    MemoryPressureSource() = default;
    MemoryPressureSource(const MemoryPressureSource&) = delete;
    MemoryPressureSource& operator=(const MemoryPressureSource&) = delete;
    virtual ~MemoryPressureSource() = default;

    /// Calls handler on the main thread whenever the level changes, until this object goes away. Never calls it where
    /// the system does not report pressure. Main thread, once.
    virtual void start(Handler handler) = 0;
};

}  // namespace kestrune
