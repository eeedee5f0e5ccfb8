#pragma once

#include <functional>

namespace kestrune {

/// Requests from outside that the program end: SIGTERM, SIGINT and SIGHUP. Main thread.
class TerminationRequests {
public:
    TerminationRequests() = default;
    TerminationRequests(const TerminationRequests&) = delete;
    TerminationRequests& operator=(const TerminationRequests&) = delete;
    virtual ~TerminationRequests() = default;

    /// Calls handler from the event loop for each such signal, for as long as this object lives; several that come
    /// together may be one call. Where that cannot be arranged the signals keep their default action. Once.
    virtual void start(std::function<void()> handler) = 0;
};

}  // namespace kestrune
