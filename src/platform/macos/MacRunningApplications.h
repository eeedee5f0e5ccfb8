#pragma once

#include <memory>

#include "platform/RunningApplications.h"
#include "platform/macos/ApplicationIcons.h"
#include "platform/macos/ShownPrograms.h"

namespace kestrune {

/// The applications as the workspace lists them, each with its start and its executable as the kernel tells them. An
/// executable is a path with links resolved, so it may differ from what a listing of processes prints. Main thread.
class MacRunningApplications final : public RunningApplications {
public:
    MacRunningApplications();
    MacRunningApplications(const MacRunningApplications&) = delete;
    MacRunningApplications& operator=(const MacRunningApplications&) = delete;
    ~MacRunningApplications() override;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
    [[nodiscard]] std::optional<RunningApplication> application(std::int32_t processIdentifier) override;
    [[nodiscard]] ApplicationIcon iconOf(const RunningApplication& application) override;
    [[nodiscard]] std::vector<std::string> namesOfProgram(const std::string& executable) override;

    [[nodiscard]] bool tellsFrontmost() override { return true; }

    void observeActivation(ActivationHandler handler) override;
    [[nodiscard]] bool isTerminated(const RunningApplication& application) override;
    [[nodiscard]] bool terminate(const RunningApplication& application) override;
    [[nodiscard]] bool forceTerminate(const RunningApplication& application) override;

private:
    struct Observer;  ///< of activations, ended with it

    ShownPrograms m_shown;
    ApplicationIcons m_icons;
    std::unique_ptr<Observer> m_observer;
};

}  // namespace kestrune
