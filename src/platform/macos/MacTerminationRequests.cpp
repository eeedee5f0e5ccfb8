#include "platform/macos/MacTerminationRequests.h"

namespace kestrune {

namespace {

// dispatch_source_create(3): a source sees every delivery but leaves the signal's action as it is, so a signal that
// would end the process has to be ignored or caught as well.
void keepRunning(int /*signal*/) {
}

void setAction(int signal, void (*action)(int)) {
    struct sigaction change {};

    change.sa_handler = action;
    change.sa_flags = SA_RESTART;
    sigaction(signal, &change, nullptr);
}

}  // namespace

void MacTerminationRequests::start(std::function<void()> handler) {
    for (std::size_t at = 0; at < signals.size(); ++at) {
        m_sources[at] =
            std::make_unique<MacDispatchSource>(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<std::uintptr_t>(signals[at]),
                                                0, [handler](std::uintptr_t /*times*/) { handler(); });
        if (m_sources[at]->isActive()) {
            setAction(signals[at], &keepRunning);
        }
    }
}

MacTerminationRequests::~MacTerminationRequests() {
    for (std::size_t at = 0; at < signals.size(); ++at) {
        if (m_sources[at] && m_sources[at]->isActive()) {
            setAction(signals[at], SIG_DFL);
        }
    }
}

}  // namespace kestrune
