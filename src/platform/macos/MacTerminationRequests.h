#pragma once

#include <array>
#include <csignal>
#include <memory>

#include "platform/TerminationRequests.h"
#include "platform/macos/MacDispatchSource.h"

namespace kestrune {

/// The signals through the main queue. They are caught, not ignored: a program that is started later would inherit an
/// ignored signal and could not be ended by it. One at a time.
class MacTerminationRequests final : public TerminationRequests {
public:
    MacTerminationRequests() = default;
    ~MacTerminationRequests() override;

    void start(std::function<void()> handler) override;

private:
    static constexpr std::array signals{SIGTERM, SIGINT, SIGHUP};

    std::array<std::unique_ptr<MacDispatchSource>, signals.size()> m_sources;  ///< in the order of signals
};

}  // namespace kestrune
