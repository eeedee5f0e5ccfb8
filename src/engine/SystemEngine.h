#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "engine/AppProtection.h"
#include "engine/TelemetryRecords.h"
#include "platform/HostStatistics.h"
#include "platform/LoginItem.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/PowerSources.h"
#include "platform/Preferences.h"
#include "platform/ProcessRunner.h"
#include "platform/RunningApplications.h"
#include "platform/SystemTools.h"
#include "platform/Trash.h"
#include "platform/VolumeInfo.h"

namespace kestrune {

/// What SystemEngine works with. Everything outlives it.
struct SystemEngineParts {
    HostStatistics& hostStatistics;
    PowerSources& powerSources;
    VolumeInfo& volumeInfo;
    ProcessRunner& processRunner;
    SystemTools& systemTools;
    Preferences& preferences;
    NotificationCenter& notificationCenter;
    const Clock& clock;
    MainQueue& mainQueue;
    RunningApplications& runningApplications;
    Trash& trash;
    LoginItem& loginItem;
    std::string homeDirectory;
    std::int32_t processIdentifier = 0;  ///< of this program
};

/// The machine's figures and the ways of acting on it. Queries never fail: what the system does not tell is zero or
/// nothing.
class SystemEngine final {
public:
    struct CommandResult {
        std::int32_t status = -1;
        std::string output;

        bool operator==(const CommandResult&) const = default;
    };

    explicit SystemEngine(SystemEngineParts parts);
    SystemEngine(const SystemEngine&) = delete;
    SystemEngine& operator=(const SystemEngine&) = delete;
    ~SystemEngine() = default;

    // Commands. All three block until the tool ended (65.5 s at most); work queues only.

    /// Runs path with args, without a shell. output holds standard output and error together; it is empty unless it
    /// is valid UTF-8. status is -1 when the tool could not be started.
    [[nodiscard]] CommandResult runProc(const std::string& path, const std::vector<std::string>& args);

    /// The output of runProc alone.
    std::string shell(const std::string& path, const std::vector<std::string>& args);

    /// Runs path with args; if that does not exit with 0, once more with administrator rights. True when it finally
    /// exited with 0.
    [[nodiscard]] bool runPrivileged(const std::string& path, const std::vector<std::string>& args);

    // Figures. Each call reads the system once.

    [[nodiscard]] VMStat getVMStat();  ///< MiB by class
    [[nodiscard]] MemorySummary getMemorySummary();

    /// Percent of non-idle processor time since the last call, or since boot at the first. One thread at a time.
    [[nodiscard]] int getCPULoadPercentage();

    /// The volume of "/". May run a tool where the system does not answer.
    [[nodiscard]] DiskSummary getDiskSummary();

    [[nodiscard]] std::string getUptimeString();  ///< "3d 4h 12m"
    [[nodiscard]] std::optional<NetworkCounters> networkCounters();
    [[nodiscard]] std::optional<BatteryReading> battery();

    // Applications and their protection.

    /// True for what must never be ended: a system process, this program, or a name the user keeps. Takes a name or
    /// an executable's path; compares in lower case, so an entry of alwaysKeepApps with capitals matches nothing. Any
    /// thread.
    [[nodiscard]] bool isProtected(const std::string& nameOrPath) const;

    /// The names the user never wants closed. Any thread.
    [[nodiscard]] std::vector<std::string> alwaysKeepApps() const;

    /// The same, to compare many with: made once and kept until a setting changes. Any thread.
    [[nodiscard]] std::shared_ptr<const AppProtection::NameSet> keptNames() const;

    /// False when the list could not be saved. Any thread.
    bool setAlwaysKeepApps(const std::vector<std::string>& names);

    /// The application the user works in, or worked in before turning to this program. Main thread.
    [[nodiscard]] std::optional<RunningApplication> currentExternalApp();

    /// Notes which application the user turned to; this program does not count. Main thread.
    void trackAppActivation(const RunningApplication& application);

    /// The limit largest processes of the machine: percent of memory and name up to its first space. Blocks.
    [[nodiscard]] std::vector<TopProcess> getTopProcesses(std::size_t limit);

    /// Of this program.
    [[nodiscard]] std::int32_t processIdentifier() const { return m_parts.processIdentifier; }

    // Closing applications: asks politely, and tells the outcome by notify(). Never ends what isProtected() or
    // alwaysKeepApps() names. Main thread.

    void killHeavyApps();
    void killDevServers();
    void keepFrontmostKillRest();
    void killEverything();
    void autoFreeMemory();
    void deepClean();

    // Maintenance: each runs fixed tools, waits for them and tells the outcome by notify(). Work queues only.

    void purgeMemory();
    std::int64_t freePurgeableDisk();  ///< bytes gained, never negative
    void emptyTrash();
    void flushDNS();
    void restartFinder();
    void toggleAnimations();
    [[nodiscard]] bool reduceFX() const;
    bool setReduceFX(bool reduce);   ///< false when it could not be saved
    std::int64_t clearUserCaches();  ///< nothing to do here: Storage does it; 0

    // Start at login. Main thread.

    /// Turns starting at login on, once in the life of an installation; a later choice of the user stays.
    void ensureLaunchAtLoginOnFirstLaunch();

    /// Asks the system each time.
    [[nodiscard]] bool isLaunchAtLoginEnabled() const;

    void toggleLaunchAtLogin();

    // Notifications.

    /// Whether notifications are shown; false while the user was never asked. The answer comes on the main thread.
    void queryNotificationPermission(std::function<void(bool allowed)> answer);

    /// Main thread. The answer is not used further.
    void requestNotificationPermission();

    /// Tells the user something that needs no answer; plays a sound instead where notifications are not allowed.
    /// Main thread.
    void notify(const std::string& title, const std::string& message);

private:
    /// Answers of the notification center may come after the engine is gone; they look at this first.
    struct Alive {};

    void notify(const std::string& title, const std::string& message, NotificationAuthorization status);
    void toggleLegacyLaunchAtLogin();
    void askThenDeliver(const std::string& title, const std::string& message);
    void playFallbackSound();

    /// Notifies under the program's name. Any thread.
    void tell(const std::string& message);

    CommandResult run(const ToolCommand& tool);
    [[nodiscard]] std::int64_t freeDiskBytes();
    [[nodiscard]] bool isThisProgram(const RunningApplication& application) const;
    [[nodiscard]] std::optional<RunningApplication> lastExternalApp();
    [[nodiscard]] std::optional<RunningApplication> appToKeep();
    [[nodiscard]] std::vector<RunningApplication> closingCandidates();

    SystemEngineParts m_parts;
    std::optional<CpuTicks> m_lastCPUTicks;
    std::int32_t m_lastExternalActivePid = 0;         ///< 0 until the user turned to another application
    std::uint64_t m_lastExternalActiveStartTime = 0;  ///< of that very process
    mutable std::mutex m_keptLock;
    mutable std::shared_ptr<const AppProtection::NameSet>
        m_kept;  ///< as of m_keptRevision; nothing before the first use
    mutable std::uint64_t m_keptRevision = 0;
    std::shared_ptr<Alive> m_alive = std::make_shared<Alive>();
};

}  // namespace kestrune
