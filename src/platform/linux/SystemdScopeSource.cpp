#include "platform/linux/SystemdScopeSource.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "base/Text.h"
#include "base/WholeNumber.h"
#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/LinuxStatusFile.h"
#include "platform/linux/SystemdUnit.h"

namespace kestrune {

namespace {

std::vector<std::string> foldersIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (std::filesystem::is_directory(entry->symlink_status(ignored))) {
            names.push_back(entry->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::int32_t> processesIn(const std::string& unitFolder) {
    constexpr std::size_t longest = 65'536;
    std::vector<std::int32_t> pids;
    LinuxStatusFile file(unitFolder + "/cgroup.procs");
    for (const std::string& line : split(file.read(longest).value_or(std::string_view{}), '\n')) {
        if (const std::int32_t pid = wholeNumber<std::int32_t>(line).value_or(0); pid > 0) {
            pids.push_back(pid);
        }
    }
    return pids;
}

}  // namespace

SystemdScopeSource::SystemdScopeSource(const std::string& cgroupRoot, std::string procRoot, std::uint32_t user,
                                       IsShown isShown)
    : m_procRoot(std::move(procRoot)), m_isShown(std::move(isShown)) {
    const std::string number = std::to_string(user);
    m_slice = cgroupRoot + "/user.slice/user-" + number + ".slice/user@" + number + ".service/app.slice";
}

bool SystemdScopeSource::isAvailable() {
    std::error_code error;
    return std::filesystem::is_directory(m_slice, error);
}

std::vector<SourcedApplication> SystemdScopeSource::applications() {
    std::vector<SourcedApplication> applications;
    addUnits(m_slice, 0, applications);
    // Numbers are handed out in turn, so this is about the order they were started in.
    std::sort(applications.begin(), applications.end(),
              [](const SourcedApplication& a, const SourcedApplication& b) { return a.pid < b.pid; });
    return applications;
}

void SystemdScopeSource::addUnits(const std::string& slice, int depth,
                                  std::vector<SourcedApplication>& applications) const {
    constexpr int deepest = 3;
    for (const std::string& name : foldersIn(slice)) {
        const std::string folder = std::string(slice).append("/").append(name);
        if (!name.ends_with(".slice")) {
            addUnit(folder, name, applications);
        } else if (depth < deepest) {
            addUnits(folder, depth + 1, applications);
        }
    }
}

void SystemdScopeSource::addUnit(const std::string& folder, const std::string& name,
                                 std::vector<SourcedApplication>& applications) const {
    const std::optional<SystemdUnit> unit = parseSystemdUnit(name);
    if (!unit || !m_isShown(unit->application)) {
        return;
    }
    std::vector<std::int32_t> pids = processesIn(folder);
    SourcedApplication application;
    application.pid = mainProcess(pids);
    if (application.pid == 0) {
        return;
    }
    application.hints = {unit->application};
    application.policy = unit->isAutostart ? ActivationPolicy::accessory : ActivationPolicy::regular;
    if (unit->launcher == "flatpak") {
        // The oldest is the sandbox around the program.
        std::erase(pids, application.pid);
        application.otherPids = std::move(pids);
    }
    applications.push_back(std::move(application));
}

// The oldest process that was not started by another one of them.
std::int32_t SystemdScopeSource::mainProcess(const std::vector<std::int32_t>& pids) const {
    constexpr std::size_t longestLine = 1024;
    std::int32_t oldest = 0;
    std::uint64_t oldestStart = 0;
    for (const std::int32_t pid : pids) {
        LinuxStatusFile file(std::string(m_procRoot).append("/").append(std::to_string(pid)).append("/stat"));
        const auto stat = LinuxProcessIdentity::parseStat(file.read(longestLine).value_or(std::string_view{}));
        const bool isFirst = stat && std::find(pids.begin(), pids.end(), stat->parent) == pids.end();
        if (isFirst && (oldest == 0 || stat->startTime < oldestStart)) {
            oldest = pid;
            oldestStart = stat->startTime;
        }
    }
    return oldest;
}

}  // namespace kestrune
