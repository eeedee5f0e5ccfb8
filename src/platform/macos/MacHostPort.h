#pragma once

#include <mach/mach.h>

namespace kestrune {

/// One right to send to the host's port. mach_host_self gives a right each time it is called; each is given back.
class MacHostPort final {
public:
    MacHostPort() : m_port(mach_host_self()) {}

    ~MacHostPort() {
        if (m_port != MACH_PORT_NULL) {
            mach_port_deallocate(mach_task_self(), m_port);
        }
    }

    MacHostPort(const MacHostPort&) = delete;
    MacHostPort& operator=(const MacHostPort&) = delete;

    [[nodiscard]] mach_port_t get() const { return m_port; }

private:
    const mach_port_t m_port;
};

}  // namespace kestrune
