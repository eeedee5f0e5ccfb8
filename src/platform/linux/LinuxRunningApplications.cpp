#include "platform/linux/LinuxRunningApplications.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>

#include "base/Text.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/LinuxPinnedProcess.h"
#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/ProcessFacts.h"

namespace kestrune {

namespace {

// Sources bound what they take, but an application that hangs may be known by dozens of processes.
constexpr std::chrono::milliseconds longestClosing{500};

// Bounds for what applications can make the list remember.
constexpr std::size_t mostPrograms = 4096;
constexpr std::size_t mostNames = 16;

bool isStill(const LinuxPinnedProcess& process, const RunningApplication& application) {
    return application.startTime != 0 && !application.executable.empty() &&
           process.isSame(application.startTime, application.executable);
}

// The process as long as it is a foreign one that may be ended: of this user, started then and running that program.
std::optional<LinuxPinnedProcess> pinned(const RunningApplication& application) {
    if (application.processIdentifier == ::getpid()) {
        return std::nullopt;
    }
    std::optional<LinuxPinnedProcess> process = LinuxPinnedProcess::open(application.processIdentifier);
    const bool isMeant = process && process->realOwner() == ::getuid() && isStill(*process, application);
    return isMeant ? std::move(process) : std::nullopt;
}

}  // namespace

LinuxRunningApplications::LinuxRunningApplications(std::vector<std::unique_ptr<ApplicationSource>> sources,
                                                   DesktopApplications installed, std::string procRoot)
    : m_sources(std::move(sources)),
      m_installed(std::move(installed)),
      m_procRoot(std::move(procRoot)),
      // Reading hundreds of desktop entries takes longer than anything else of a start, and only the first list of
      // applications needs them.
      m_firstReading(std::async(std::launch::async, [this] { static_cast<void>(m_installed.refresh()); })) {
}

DesktopApplications& LinuxRunningApplications::installed() {
    if (m_firstReading.valid()) {
        m_firstReading.get();
    }
    return m_installed;
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

ApplicationIcon LinuxRunningApplications::iconOf(const RunningApplication& application) {
    return {installed().pictureOf(application.iconNames), nullptr};
}

std::vector<std::string> LinuxRunningApplications::namesOfProgram(const std::string& executable) {
    if (const auto known = m_programNames.find(executable); known != m_programNames.end()) {
        return known->second;
    }
    std::set<std::string> names;
    // What an interpreter runs is not told by its executable.
    if (!isLauncher(lastPathComponent(executable))) {
        if (const auto shown = m_shownNames.find(executable); shown != m_shownNames.end()) {
            names = shown->second;
        }
        names.insert(installed().nameOfProgram(executable));
        names.erase("");
    }
    if (m_programNames.size() >= mostPrograms) {
        m_programNames.clear();
    }
    return m_programNames.emplace(executable, std::vector(names.begin(), names.end())).first->second;
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
    return !stat || LinuxProcessIdentity::hasEnded(*stat) || stat->startTime != application.startTime ||
           (!application.executable.empty() && LinuxProcessIdentity::commandOf(folder.get()) != application.executable);
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
        if (source->close(application.processIdentifier, [&] { return isStill(*process, application); })) {
            return true;
        }
        // What the user takes for one application may answer through another of its processes.
        for (const std::int32_t pid : others) {
            if (std::chrono::steady_clock::now() > deadline) {
                break;
            }
            const std::optional<LinuxPinnedProcess> other = LinuxPinnedProcess::open(pid);
            const auto isStillMeant = [&] { return isStill(*process, application) && !other->hasEnded(); };
            if (other && pid != ::getpid() && other->realOwner() == ::getuid() && source->close(pid, isStillMeant)) {
                return true;
            }
        }
    }
    return false;
}

bool LinuxRunningApplications::forceTerminate(const RunningApplication& application) {
    const std::optional<LinuxPinnedProcess> process = pinned(application);
    return process && process->send(SIGKILL);
}

MergedApplications LinuxRunningApplications::ask() {
    if (installed().refresh()) {
        m_known.clear();
        m_programNames.clear();
    }
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
    if (!stat || LinuxProcessIdentity::hasEnded(*stat)) {
        return std::nullopt;
    }
    Known now{stat->startTime, application, LinuxProcessIdentity::commandOf(folder.get()).value_or(std::string{}),
              std::nullopt};
    const auto known = m_known.find(application.pid);
    if (known != m_known.end() && known->second.startTime == now.startTime && known->second.command == now.command &&
        known->second.sourced == application) {
        return known->second.application;
    }
    if (LinuxProcessIdentity::realOwnerOf(folder.get()) == ::getuid()) {
        now.application = lookUp(now);
        rememberName(*now.application);
    }
    return m_known.insert_or_assign(application.pid, std::move(now)).first->second.application;
}

RunningApplication LinuxRunningApplications::lookUp(const Known& known) {
    const std::int32_t pid = known.sourced.pid;
    const std::string path = std::string(m_procRoot).append("/").append(std::to_string(pid));
    const ApplicationIdentity identity = installed().identityOf(known.sourced, readProcessFacts(path));
    return {.processIdentifier = pid,
            .startTime = known.startTime,
            .executable = known.command,
            .localizedName = identity.name,
            .bundleIdentifier = identity.identifier,
            .iconNames = identity.iconNames,
            .activationPolicy = known.sourced.policy};
}

void LinuxRunningApplications::rememberName(const RunningApplication& application) {
    const std::string& executable = application.executable;
    if (application.activationPolicy != ActivationPolicy::regular || application.localizedName.empty() ||
        (m_shownNames.size() >= mostPrograms && !m_shownNames.contains(executable))) {
        return;
    }
    std::set<std::string>& names = m_shownNames[executable];
    if (names.size() < mostNames && names.insert(application.localizedName).second) {
        m_programNames.erase(executable);
    }
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
