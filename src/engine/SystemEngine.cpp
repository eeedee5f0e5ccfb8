#include "engine/SystemEngine.h"

#include <utility>

#include "base/Text.h"
#include "engine/MacTelemetry.h"
#include "engine/TelemetryFormulas.h"

namespace kestrune {

SystemEngine::SystemEngine(SystemEngineParts parts) : m_parts(std::move(parts)) {
    const std::weak_ptr<Alive> alive = m_alive;
    m_parts.runningApplications.observeActivation([this, alive](const RunningApplication& application) {
        if (!alive.expired()) {
            trackAppActivation(application);
        }
    });
}

SystemEngine::CommandResult SystemEngine::runProc(const std::string& path, const std::vector<std::string>& args) {
    ProcessResult result = m_parts.processRunner.run(path, args);
    if (!isValidUtf8(result.output)) {
        result.output.clear();
    }
    return {result.status, std::move(result.output)};
}

SystemEngine::CommandResult SystemEngine::run(const ToolCommand& tool) {
    return runProc(tool.executable, tool.arguments);
}

std::string SystemEngine::shell(const std::string& path, const std::vector<std::string>& args) {
    return runProc(path, args).output;
}

bool SystemEngine::runPrivileged(const std::string& path, const std::vector<std::string>& args) {
    if (runProc(path, args).status == 0) {
        return true;
    }
    return run(m_parts.systemTools.withAdministratorRights({path, args})).status == 0;
}

VMStat SystemEngine::getVMStat() {
    return TelemetryFormulas::vmStat(m_parts.hostStatistics.memory());
}

MemorySummary SystemEngine::getMemorySummary() {
    return TelemetryFormulas::memorySummary(getVMStat());
}

int SystemEngine::getCPULoadPercentage() {
    const std::optional<CpuTicks> ticks = m_parts.hostStatistics.cpuTicks();
    if (!ticks) {
        return 0;
    }
    const int load = TelemetryFormulas::cpuLoadPercentage(m_lastCPUTicks, *ticks);
    m_lastCPUTicks = ticks;
    return load;
}

DiskSummary SystemEngine::getDiskSummary() {
    if (const std::optional<VolumeCapacity> capacity = m_parts.volumeInfo.capacity("/")) {
        return TelemetryFormulas::diskSummary(*capacity);
    }
    return TelemetryFormulas::diskSummaryFromDf(run(m_parts.systemTools.diskFree()).output);
}

std::string SystemEngine::getUptimeString() {
    const std::optional<std::int64_t> bootTime = m_parts.hostStatistics.bootTime();
    if (!bootTime) {
        return TelemetryFormulas::uptimeText(0);
    }
    const Seconds running = m_parts.clock.now().time_since_epoch() - std::chrono::seconds(*bootTime);
    return TelemetryFormulas::uptimeText(std::chrono::duration_cast<std::chrono::seconds>(running).count());
}

std::optional<NetworkCounters> SystemEngine::networkCounters() {
    return MacTelemetry::networkCounters(m_parts.hostStatistics.networkInterfaces());
}

std::optional<BatteryReading> SystemEngine::battery() {
    return MacTelemetry::battery(m_parts.powerSources.sources());
}

std::int64_t SystemEngine::freeDiskBytes() {
    const std::optional<VolumeCapacity> capacity = m_parts.volumeInfo.capacity("/");
    return capacity ? capacity->available.value_or(0) : 0;
}

void SystemEngine::requestNotificationPermission() {
    if (m_parts.notificationCenter.hasIdentity()) {
        m_parts.notificationCenter.requestAuthorization([](bool) {});
    }
}

void SystemEngine::notify(const std::string& title, const std::string& message) {
    if (!m_parts.notificationCenter.hasIdentity()) {
        return;
    }
    const std::weak_ptr<Alive> alive = m_alive;
    m_parts.notificationCenter.queryAuthorization([this, alive, title, message](NotificationAuthorization status) {
        if (!alive.expired()) {
            notify(title, message, status);
        }
    });
}

void SystemEngine::tell(const std::string& message) {
    m_parts.mainQueue.post([this, alive = std::weak_ptr<Alive>(m_alive), message] {
        if (!alive.expired()) {
            notify("Kestrune", message);
        }
    });
}

void SystemEngine::notify(const std::string& title, const std::string& message, NotificationAuthorization status) {
    switch (status) {
        case NotificationAuthorization::authorized:
        case NotificationAuthorization::provisional:
        case NotificationAuthorization::ephemeral:
            m_parts.notificationCenter.deliver(title, message);
            break;
        case NotificationAuthorization::notDetermined:
            askThenDeliver(title, message);
            break;
        case NotificationAuthorization::denied:
            playFallbackSound();
            break;
    }
}

void SystemEngine::askThenDeliver(const std::string& title, const std::string& message) {
    const std::weak_ptr<Alive> alive = m_alive;
    m_parts.notificationCenter.requestAuthorization([this, alive, title, message](bool granted) {
        if (alive.expired()) {
            return;
        }
        if (granted) {
            m_parts.notificationCenter.deliver(title, message);
        } else {
            playFallbackSound();
        }
    });
}

void SystemEngine::playFallbackSound() {
    if (!m_parts.notificationCenter.playSound("Pop")) {
        m_parts.notificationCenter.beep();
    }
}

}  // namespace kestrune
