#include "platform/linux/LinuxTerminationRequests.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace kestrune {

namespace {

constexpr std::array signals{SIGTERM, SIGINT, SIGHUP};

// Set before the handlers are installed and left alone until they are taken down.
volatile std::sig_atomic_t writeEnd = -1;

void handle(int) {
    // The interrupted code may be about to look at the error of its own call.
    const int interruptedError = errno;
    const char byte = 1;
    // A full pipe already holds what there is to tell.
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    errno = interruptedError;
}

void setHandlers(void (*handler)(int)) {
    struct sigaction action {};

    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : signals) {
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace

void LinuxTerminationRequests::start(std::function<void()> handler) {
    if (pipe(m_pipe.data()) != 0) {
        return;
    }
    for (const int end : m_pipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated,
                     [handler = std::move(handler), readEnd = m_pipe[0]] {
                         std::array<char, 16> bytes{};
                         while (read(readEnd, bytes.data(), bytes.size()) > 0) {
                         }
                         handler();
                     });
    writeEnd = m_pipe[1];
    setHandlers(&handle);
}

LinuxTerminationRequests::~LinuxTerminationRequests() {
    if (m_notifier) {
        setHandlers(SIG_DFL);
        m_notifier.reset();
        close(m_pipe[0]);
        close(m_pipe[1]);
    }
}

}  // namespace kestrune
