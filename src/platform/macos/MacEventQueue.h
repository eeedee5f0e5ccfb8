#pragma once

#include <sys/types.h>

#include <chrono>

#include "platform/macos/MacFileDescriptor.h"

namespace kestrune {

/// Waits for output and for the end of a process at once, by kqueue(2). One thread.
class MacEventQueue final {
public:
    /// What came while waiting. Both may be told anew, and later than they were true.
    struct Events {
        bool isReadable = false;
        bool hasEnded = false;
    };

    MacEventQueue();

    /// False when the system could not make one.
    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(m_queue); }

    /// Tells from now on when descriptor has bytes or its last writer is gone. It leaves the queue when it is closed.
    [[nodiscard]] bool watchReading(int descriptor);

    /// Tells from now on when process pid ends. False when that will not be told: it may have ended already.
    [[nodiscard]] bool watchEnd(pid_t pid);

    /// Waits for longest, less when something comes or a signal interrupts.
    [[nodiscard]] Events wait(std::chrono::milliseconds longest);

private:
    MacFileDescriptor m_queue;
};

}  // namespace kestrune
