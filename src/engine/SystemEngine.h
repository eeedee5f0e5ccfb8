#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "engine/TelemetryRecords.h"
#include "platform/HostStatistics.h"
#include "platform/NotificationCenter.h"
#include "platform/PowerSources.h"
#include "platform/Preferences.h"
#include "platform/ProcessRunner.h"
#include "platform/SystemTools.h"
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

    explicit SystemEngine(const SystemEngineParts& parts);
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

    // Preferences and notifications.

    /// The names the user never wants closed.
    [[nodiscard]] std::vector<std::string> alwaysKeepApps() const;

    /// Main thread. The answer is not used further.
    void requestNotificationPermission();

    /// Tells the user something that needs no answer; plays a sound instead where notifications are not allowed.
    /// Main thread.
    void notify(const std::string& title, const std::string& message);

private:
    /// Answers of the notification center may come after the engine is gone; they look at this first.
    struct Alive {};

    void notify(const std::string& title, const std::string& message, NotificationAuthorization status);
    void askThenDeliver(const std::string& title, const std::string& message);
    void playFallbackSound();

    SystemEngineParts m_parts;
    std::optional<CpuTicks> m_lastCPUTicks;
    std::shared_ptr<Alive> m_alive = std::make_shared<Alive>();
};

}  // namespace kestrune
