#include "platform/linux/LinuxMemoryPressure.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <string_view>
#include <utility>

#include "platform/linux/PressureLevel.h"

namespace kestrune {

namespace {

// Only the kernel's own file takes a trigger; anything else would be overwritten.
bool isProcFile(int descriptor) {
    struct statfs fileSystem {};

    return ::fstatfs(descriptor, &fileSystem) == 0 && fileSystem.f_type == PROC_SUPER_MAGIC;
}

}  // namespace

LinuxMemoryPressure::LinuxMemoryPressure(std::string path, Intervals intervals)
    : m_path(std::move(path)), m_intervals(intervals), m_file(m_path) {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(false); });
}

void LinuxMemoryPressure::start(Handler handler) {
    m_handler = std::move(handler);
    if (!armTrigger()) {
        m_timer.setTimerType(Qt::VeryCoarseTimer);
        m_timer.setInterval(m_intervals.poll);
    } else {
        m_timer.setTimerType(Qt::CoarseTimer);
        m_timer.setInterval(m_intervals.recheck);
    }
    look(false);
}

bool LinuxMemoryPressure::armTrigger() {
    // Without rights of its own a program may watch whole windows of 2 s only.
    constexpr std::string_view trigger = "some 150000 2000000";
    LinuxFileDescriptor descriptor(::open(m_path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    // The kernel wants the text with its final NUL.
    if (!descriptor || !isProcFile(descriptor.get()) ||
        ::write(descriptor.get(), trigger.data(), trigger.size() + 1) < 0) {
        return false;
    }
    m_trigger = std::move(descriptor);
    m_notifier.emplace(m_trigger.get(), QSocketNotifier::Exception);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier, [this] { look(true); });
    return true;
}

void LinuxMemoryPressure::look(bool triggered) {
    constexpr std::size_t longest = 512;
    const std::optional<std::string_view> text = m_file.read(longest);
    const std::optional<PressureReading> reading = text ? parsePressure(*text) : std::nullopt;
    if (!reading) {
        m_timer.stop();
        return;
    }
    const PressureLevels levels = pressureLevels(*reading, triggered);
    if (levels.normal && isTriggered()) {
        m_timer.stop();
    } else if (triggered || !m_timer.isActive()) {
        m_timer.start();
    }
    if (m_told != levels) {
        m_told = levels;
        m_handler(levels);
    }
}

}  // namespace kestrune
