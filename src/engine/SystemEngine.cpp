#include "engine/SystemEngine.h"

#include <utility>

#include "base/Text.h"
#include "engine/MacTelemetry.h"
#include "engine/TelemetryFormulas.h"

namespace kestrune {

SystemEngine::SystemEngine(const SystemEngineParts& parts) : m_parts(parts) {
}

SystemEngine::CommandResult SystemEngine::runProc(const std::string& path, const std::vector<std::string>& args) {
    ProcessResult result = m_parts.processRunner.run(path, args);
    if (!isValidUtf8(result.output)) {
        result.output.clear();
    }
    return {result.status, std::move(result.output)};
}

std::string SystemEngine::shell(const std::string& path, const std::vector<std::string>& args) {
    return runProc(path, args).output;
}

bool SystemEngine::runPrivileged(const std::string& path, const std::vector<std::string>& args) {
    if (runProc(path, args).status == 0) {
        return true;
    }
    const ToolCommand prompt = m_parts.systemTools.withAdministratorRights({path, args});
    return runProc(prompt.executable, prompt.arguments).status == 0;
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
    const ToolCommand tool = m_parts.systemTools.diskFree();
    return TelemetryFormulas::diskSummaryFromDf(shell(tool.executable, tool.arguments));
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

std::vector<std::string> SystemEngine::alwaysKeepApps() const {
    return m_parts.preferences.texts("alwaysKeepApps").value_or(Preferences::Texts{});
}

bool SystemEngine::setAlwaysKeepApps(const std::vector<std::string>& names) {
    return m_parts.preferences.setTexts("alwaysKeepApps", names);
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
