#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/RunningApplications.h"

namespace kestrune {

/// The applications the test starts; none until then. They accept every request and go on running. Their icon is the
/// first of their icon names.
class FakeRunningApplications final : public RunningApplications {
public:
    [[nodiscard]] std::vector<RunningApplication> runningApplications() override {
        ++reads;
        return applications;
    }

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return frontmost == 0 ? std::nullopt : application(frontmost);
    }

    [[nodiscard]] std::optional<RunningApplication> application(std::int32_t processIdentifier) override {
        const auto found = std::find_if(applications.begin(), applications.end(), [&](const auto& application) {
            return application.processIdentifier == processIdentifier;
        });
        return found == applications.end() ? std::nullopt : std::optional(*found);
    }

    [[nodiscard]] ApplicationIcon iconOf(const RunningApplication& application) override {
        ++iconQuestions;
        return {application.iconNames.empty() ? std::string{} : application.iconNames.front(), nullptr};
    }

    [[nodiscard]] std::vector<std::string> namesOfProgram(const std::string& executable) override {
        const auto found = programNames.find(executable);
        return found == programNames.end() ? std::vector<std::string>{} : found->second;
    }

    [[nodiscard]] bool tellsFrontmost() override { return frontmostIsTold; }

    void observeActivation(ActivationHandler handler) override { m_handler = std::move(handler); }

    [[nodiscard]] bool isTerminated(const RunningApplication& application) override {
        return std::find(applications.begin(), applications.end(), application) == applications.end();
    }

    [[nodiscard]] bool terminate(const RunningApplication& application) override {
        asked.push_back(application.processIdentifier);
        return !isTerminated(application) && !declining.contains(application.processIdentifier);
    }

    [[nodiscard]] bool forceTerminate(const RunningApplication& application) override {
        forced.push_back(application.processIdentifier);
        return !isTerminated(application) && !declining.contains(application.processIdentifier);
    }

    /// Starts a regular application and answers it.
    RunningApplication& start(std::int32_t pid, std::string name, std::string bundleIdentifier = {}) {
        applications.push_back({.processIdentifier = pid,
                                .startTime = nextStartTime++,
                                .executable = "/usr/bin/app",
                                .localizedName = std::move(name),
                                .bundleIdentifier = std::move(bundleIdentifier),
                                .iconNames = {},
                                .activationPolicy = ActivationPolicy::regular});
        return applications.back();
    }

    /// Ends the application with this process identifier.
    void end(std::int32_t pid) {
        std::erase_if(applications, [&](const auto& application) { return application.processIdentifier == pid; });
    }

    /// Brings the application to the front, as the user does.
    void activate(std::int32_t pid) {
        frontmost = pid;
        if (const auto activated = application(pid); activated && m_handler) {
            m_handler(*activated);
        }
    }

    std::vector<RunningApplication> applications;
    std::map<std::string, std::vector<std::string>> programNames;  ///< by executable
    std::int32_t frontmost = 0;                                    ///< 0: none, or hidden by the desktop
    bool frontmostIsTold = true;
    std::set<std::int32_t> declining;  ///< do not accept a request
    std::vector<std::int32_t> asked;   ///< to quit, in order
    std::vector<std::int32_t> forced;
    std::uint64_t nextStartTime = 1;
    int reads = 0;
    int iconQuestions = 0;

private:
    ActivationHandler m_handler;
};

}  // namespace kestrune
