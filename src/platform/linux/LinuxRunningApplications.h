#pragma once

#include <cstdint>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/RunningApplications.h"
#include "platform/linux/ApplicationSource.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/MergedApplications.h"

namespace kestrune {

/// Merges what the parts of the desktop tell about applications, and holds every process to its start time. The
/// applications of other users on the same display are left out. A program that shows nothing but dialogs, or windows
/// that keep out of the taskbar, is an accessory one. Main thread.
class LinuxRunningApplications final : public RunningApplications {
public:
    /// sources, the most telling first. procRoot is where the list reads about processes.
    LinuxRunningApplications(std::vector<std::unique_ptr<ApplicationSource>> sources, DesktopApplications installed,
                             std::string procRoot = "/proc");

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
    [[nodiscard]] std::optional<RunningApplication> application(std::int32_t processIdentifier) override;
    [[nodiscard]] ApplicationIcon iconOf(const RunningApplication& application) override;
    [[nodiscard]] std::vector<std::string> namesOfProgram(const std::string& executable) override;
    [[nodiscard]] bool tellsFrontmost() override;
    void observeActivation(ActivationHandler handler) override;
    [[nodiscard]] bool isTerminated(const RunningApplication& application) override;
    [[nodiscard]] bool terminate(const RunningApplication& application) override;
    [[nodiscard]] bool forceTerminate(const RunningApplication& application) override;

private:
    /// What was found out about a process, good for as long as it runs the same program and its sources say the same.
    struct Known {
        std::uint64_t startTime = 0;
        SourcedApplication sourced;
        std::string command;  ///< what its process runs
        std::optional<RunningApplication> application;
    };

    /// Everything asks through this: the first reading may still be under way.
    [[nodiscard]] DesktopApplications& installed();
    [[nodiscard]] MergedApplications ask();
    [[nodiscard]] std::optional<RunningApplication> described(const SourcedApplication& application);
    [[nodiscard]] RunningApplication lookUp(const Known& known);
    void rememberName(const RunningApplication& application);
    [[nodiscard]] std::optional<RunningApplication> describedWithProcess(std::int32_t pid);
    void tellActivation(std::int32_t pid);

    std::vector<std::unique_ptr<ApplicationSource>> m_sources;
    DesktopApplications m_installed;
    std::string m_procRoot;
    std::map<std::int32_t, Known> m_known;
    std::map<std::string, std::set<std::string>> m_shownNames;       ///< by executable, since this object was made
    std::map<std::string, std::vector<std::string>> m_programNames;  ///< what namesOfProgram() answered
    ActivationHandler m_handler;
    std::pair<std::int32_t, std::uint64_t> m_lastActivated;  ///< pid and start time
    std::future<void> m_firstReading;  ///< last, so that it is waited for first: it works on m_installed
};

}  // namespace kestrune
