#include "platform/linux/LinuxRunningApplications.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>

#include "platform/linux/LinuxPinnedProcess.h"
#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/ProcessFacts.h"

namespace kestrune {

namespace {

// Sources bound what they take, but an application that hangs may be known by dozens of processes.
constexpr std::chrono::milliseconds longestClosing{500};

bool hasEnded(const LinuxProcessIdentity::Stat& stat) {
    return stat.state == 'Z' || stat.state == 'X';
}

// The process as long as it is a foreign one that may be ended: of this user, and started then.
std::optional<LinuxPinnedProcess> pinned(const RunningApplication& application) {
    if (application.processIdentifier == ::getpid()) {
        return std::nullopt;
    }
    std::optional<LinuxPinnedProcess> process = LinuxPinnedProcess::open(application.processIdentifier);
    const bool isMeant = process && process->realOwner() == ::getuid() && process->startedAt(application.startTime);
    return isMeant ? std::move(process) : std::nullopt;
}

}  // namespace

LinuxRunningApplications::LinuxRunningApplications(std::vector<std::unique_ptr<ApplicationSource>> sources,
                                                   DesktopApplications installed, std::string procRoot)
    : m_sources(std::move(sources)), m_installed(std::move(installed)), m_procRoot(std::move(procRoot)) {
}

std::vector<RunningApplication> LinuxRunningApplications::runningApplications() {
    std::vector<RunningApplication> applications;
    std::map<std::int32_t, Known> stillKnown;
    const MergedApplications merged = ask();
    for (const SourcedApplication& sourced : merged.all()) {
        if (std::optional<RunningApplication> application = described(sourced)) {
            applications.push_back(std::move(*application));
        }
        if (const auto known = m_known.find(sourced.pid); known != m_known.end()) {
            stillKnown.insert(m_known.extract(known));
        }
    }
    m_known = std::move(stillKnown);
    return applications;
}

std::optional<RunningApplication> LinuxRunningApplications::frontmostApplication() {
    for (const auto& source : m_sources) {
        if (const std::optional<std::int32_t> pid = source->frontmost()) {
            return describedWithProcess(*pid);
        }
    }
    return std::nullopt;
}

std::optional<RunningApplication> LinuxRunningApplications::application(std::int32_t processIdentifier) {
    const MergedApplications merged = ask();
    const SourcedApplication* const sourced = merged.withProcess(processIdentifier);
    return sourced == nullptr ? std::nullopt : described(*sourced);
}

std::string LinuxRunningApplications::iconOf(const RunningApplication& application) {
    return m_installed.pictureOf(application.iconNames);
}

bool LinuxRunningApplications::tellsFrontmost() {
    return std::any_of(m_sources.begin(), m_sources.end(), [](const auto& source) { return source->tellsFrontmost(); });
}

void LinuxRunningApplications::observeActivation(ActivationHandler handler) {
    m_handler = std::move(handler);
    for (const auto& source : m_sources) {
        source->observeActivation([this](std::int32_t pid) { tellActivation(pid); });
    }
}

bool LinuxRunningApplications::isTerminated(const RunningApplication& application) {
    const LinuxFileDescriptor folder = LinuxProcessIdentity::openFolder(application.processIdentifier, m_procRoot);
    const auto stat = folder ? LinuxProcessIdentity::statOf(folder.get()) : std::nullopt;
    return !stat || hasEnded(*stat) || stat->startTime != application.startTime;
}

bool LinuxRunningApplications::terminate(const RunningApplication& application) {
    const std::optional<LinuxPinnedProcess> process = pinned(application);
    if (!process) {
        return false;
    }
    const MergedApplications merged = ask();
    const SourcedApplication* const sourced = merged.withProcess(application.processIdentifier);
    const std::vector<std::int32_t> others = sourced == nullptr ? std::vector<std::int32_t>{} : sourced->otherPids;
    const auto deadline = std::chrono::steady_clock::now() + longestClosing;
    for (const auto& source : m_sources) {
        if (source->close(application.processIdentifier, [&] { return process->startedAt(application.startTime); })) {
            return true;
        }
        // What the user takes for one application may answer through another of its processes.
        for (const std::int32_t pid : others) {
            if (std::chrono::steady_clock::now() > deadline) {
                break;
            }
            const std::optional<LinuxPinnedProcess> other = LinuxPinnedProcess::open(pid);
            const auto isStillMeant = [&] { return process->startedAt(application.startTime) && !other->hasEnded(); };
            if (other && pid != ::getpid() && other->realOwner() == ::getuid() && source->close(pid, isStillMeant)) {
                return true;
            }
        }
    }
    return false;
}

bool LinuxRunningApplications::forceTerminate(const RunningApplication& application) {
    const std::optional<LinuxPinnedProcess> process = pinned(application);
    if (!process) {
        return false;
    }
    const auto known = m_known.find(application.processIdentifier);
    const bool runsAnother = known != m_known.end() && known->second.startTime == application.startTime &&
                             !process->isSame(application.startTime, known->second.command);
    return !runsAnother && process->send(SIGKILL);
}

MergedApplications LinuxRunningApplications::ask() {
    MergedApplications merged;
    for (const auto& source : m_sources) {
        merged.add(source->applications());
        if (source->isComplete()) {
            break;
        }
    }
    return merged;
}

std::optional<RunningApplication> LinuxRunningApplications::described(const SourcedApplication& application) {
    const LinuxFileDescriptor folder = LinuxProcessIdentity::openFolder(application.pid, m_procRoot);
    const auto stat = folder ? LinuxProcessIdentity::statOf(folder.get()) : std::nullopt;
    if (!stat || hasEnded(*stat)) {
        return std::nullopt;
    }
    if (m_installed.refresh()) {
        m_known.clear();
    }
    const auto known = m_known.find(application.pid);
    if (known != m_known.end() && known->second.startTime == stat->startTime && known->second.sourced == application) {
        return known->second.application;
    }
    return m_known.insert_or_assign(application.pid, lookUp(application, folder.get(), stat->startTime))
        .first->second.application;
}

LinuxRunningApplications::Known LinuxRunningApplications::lookUp(const SourcedApplication& application, int folder,
                                                                 std::uint64_t startTime) {
    Known known{startTime, application, LinuxProcessIdentity::commandOf(folder).value_or(std::string{}), std::nullopt};
    if (LinuxProcessIdentity::realOwnerOf(folder) == ::getuid()) {
        const std::string path = std::string(m_procRoot).append("/").append(std::to_string(application.pid));
        const ApplicationIdentity identity = m_installed.identityOf(application, readProcessFacts(path));
        known.application = RunningApplication{.processIdentifier = application.pid,
                                               .startTime = startTime,
                                               .localizedName = identity.name,
                                               .bundleIdentifier = identity.identifier,
                                               .iconNames = identity.iconNames,
                                               .activationPolicy = application.policy};
    }
    return known;
}

std::optional<RunningApplication> LinuxRunningApplications::describedWithProcess(std::int32_t pid) {
    const MergedApplications merged = ask();
    if (const SourcedApplication* const sourced = merged.withProcess(pid)) {
        return described(*sourced);
    }
    // In front already, but not listed yet.
    SourcedApplication unlisted;
    unlisted.pid = pid;
    unlisted.policy = ActivationPolicy::accessory;
    return described(unlisted);
}

void LinuxRunningApplications::tellActivation(std::int32_t pid) {
    const std::optional<RunningApplication> application = describedWithProcess(pid);
    if (!application) {
        return;
    }
    // Several sources may see the same change.
    const std::pair activated{application->processIdentifier, application->startTime};
    if (activated != m_lastActivated) {
        m_lastActivated = activated;
        m_handler(*application);
    }
}

}  // namespace kestrune
