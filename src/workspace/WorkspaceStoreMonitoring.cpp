#include "base/Localized.h"
#include "engine/MacTelemetry.h"
#include "workspace/PreferenceKeys.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr std::chrono::seconds monitorInterval{60};
constexpr Seconds reminderInterval{86'400};

}  // namespace

void WorkspaceStore::startMonitoring() {
    refreshProcesses();
    m_parts.memoryPressure.start([this, alive = std::weak_ptr<bool>(m_alive)](const PressureLevels& levels) {
        if (!alive.expired()) {
            pressure.set(levels.critical  ? localizable("High")
                         : levels.warning ? localizable("Elevated")
                                          : localizable("Normal"));
        }
    });
    m_monitorTimer = m_parts.mainQueue.every(monitorInterval, [this] { monitorTick(); });
}

void WorkspaceStore::monitorTick() {
    const WallTime time = now();
    if (!reminders.get() || isBusy() || (lastReminder.get() && time - *lastReminder.get() < reminderInterval)) {
        return;
    }
    lastReminder.set(time);
    const bool saved = m_parts.preferences.setDate(PreferenceKeys::lastScanReminder, time);
    scan();
    noteSaved(saved);
    m_parts.engine.notify(
        localized("Your daily storage review"),
        localized("Kestrune is scanning supported cache locations. Open Storage to review the results. "
                  "Nothing is deleted automatically."));
}

void WorkspaceStore::refreshTelemetry() {
    cpuPercent.set(m_parts.engine.getCPULoadPercentage());
    batteryReading.set(m_parts.engine.battery());
    const Seconds time = m_parts.clock.uptime();
    refreshNetworkRates(time);
    telemetryHistory.set(appended(telemetryHistory.get(),
                                  {time, memoryPercent.get(), cpuPercent.get(), downloadRate.get(), uploadRate.get()}));
}

void WorkspaceStore::refreshNetworkRates(Seconds now) {
    const auto counters = m_parts.engine.networkCounters();
    std::optional<NetworkRates> rates;
    if (counters && m_previousNetwork) {
        rates = MacTelemetry::rates(m_previousNetwork->first, *counters, (now - m_previousNetwork->second).count());
    }
    downloadRate.set(rates ? std::optional(rates->down) : std::nullopt);
    uploadRate.set(rates ? std::optional(rates->up) : std::nullopt);
    m_previousNetwork = counters ? std::optional(std::pair(*counters, now)) : std::nullopt;
}

void WorkspaceStore::setReminders(bool on) {
    reminders.set(on);
    noteSaved(m_parts.preferences.setBoolean(PreferenceKeys::scanReminders, on));
    if (on) {
        m_parts.engine.requestNotificationPermission();
    }
}

}  // namespace kestrune
