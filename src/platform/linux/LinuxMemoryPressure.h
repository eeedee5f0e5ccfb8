#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <optional>
#include <string>

#include "platform/MemoryPressureSource.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

/// Pressure stall information (Documentation/accounting/psi.rst). The kernel wakes the program when tasks waited for
/// memory 150 ms within 2 s; from then on the level is looked at every recheck interval until it is normal again, and
/// then no timer runs. Where the kernel refuses the trigger, the level is looked at every poll interval. Where there
/// is no such file, nothing is ever told. The first level is told before start returns. Main thread, with an event
/// loop.
class LinuxMemoryPressure final : public MemoryPressureSource {
public:
    struct Intervals {
        std::chrono::milliseconds recheck = std::chrono::seconds(5);
        std::chrono::milliseconds poll = std::chrono::seconds(10);
    };

    explicit LinuxMemoryPressure(std::string path = "/proc/pressure/memory", Intervals intervals = defaultIntervals());

    void start(Handler handler) override;

    /// True when the kernel tells of pressure by itself, so that nothing runs while all is quiet. After start.
    [[nodiscard]] bool isTriggered() const { return m_notifier.has_value(); }

private:
    [[nodiscard]] static Intervals defaultIntervals() { return {}; }

    [[nodiscard]] bool armTrigger();
    void look(bool triggered);

    std::string m_path;
    Intervals m_intervals;
    Handler m_handler;
    LinuxStatusFile m_file;
    LinuxFileDescriptor m_trigger;
    std::optional<QSocketNotifier> m_notifier;
    QTimer m_timer;
    std::optional<PressureLevels> m_told;
};

}  // namespace kestrune
