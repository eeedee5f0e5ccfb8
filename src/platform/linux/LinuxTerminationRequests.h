#pragma once

#include <QSocketNotifier>

#include <array>
#include <functional>
#include <memory>

#include "platform/TerminationRequests.h"

namespace kestrune {

/// The signals through a pipe that the event loop watches. One at a time.
class LinuxTerminationRequests final : public TerminationRequests {
public:
    LinuxTerminationRequests() = default;
    ~LinuxTerminationRequests() override;

    void start(std::function<void()> handler) override;

private:
    std::array<int, 2> m_pipe{-1, -1};  ///< read end, write end
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace kestrune
