#pragma once

#include <QSocketNotifier>

#include <array>
#include <functional>
#include <memory>

namespace kestrune {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, for as long as it lives. One at a time.
class TerminationSignals final {
public:
    explicit TerminationSignals(std::function<void()> handler);
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::array<int, 2> m_pipe{-1, -1};  ///< read end, write end
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace kestrune
