#include "ui/TelemetryTiles.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "base/ByteCount.h"
#include "ui/UiText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr double quietNetwork = 64'000;  // bytes per second; a line never looks busier than this scale allows
constexpr int lowBattery = 25;           // percent

using Figure = std::function<std::optional<double>(const TelemetrySample&)>;

double highest(const std::vector<TelemetrySample>& history, const Figure& figure, double atLeast) {
    for (const TelemetrySample& sample : history) {
        atLeast = std::max(atLeast, figure(sample).value_or(0));
    }
    return atLeast;
}

QVector<QPointF> curve(const std::vector<TelemetrySample>& history, const Figure& figure, double scale) {
    QVector<QPointF> points;
    if (history.empty()) {
        return points;
    }
    const Seconds now = history.back().time;
    for (const TelemetrySample& sample : history) {
        const double age = (now - sample.time) / telemetryHistorySpan;
        const auto value = figure(sample);
        if (value && age <= 1) {
            points.append({1 - age, std::clamp(*value / scale, 0.0, 1.0)});
        }
    }
    return points;
}

QString rateText(double bytesPerSecond) {
    const double bounded = std::clamp(bytesPerSecond, 0.0, 1e18);
    return translated("%1/s", {shown(formatByteCount(static_cast<std::int64_t>(bounded)))});
}

QString oneDecimal(double number) {
    const QStringList parts = QString::number(number, 'f', 1).split(QLatin1Char('.'));
    return translated("%1.%2", {parts.first(), parts.last()});
}

TileContent percentTile(const char* symbol, const QString& title, int percent, const QString& detail, Sparkline line) {
    return {QLatin1String(symbol), title, QString::number(percent), QStringLiteral("%"), detail, true, std::move(line)};
}

TileContent pressureTile(const std::string& pressure) {
    const int steps = pressure == "Normal" ? 1 : pressure == "Elevated" ? 2 : pressure == "High" ? 3 : 0;
    return {QStringLiteral("gauge"),
            translated("Memory pressure"),
            translated(pressure),
            {},
            translated("Reported by macOS"),
            true,
            TileLevel{steps}};
}

TileContent storageTile(const DiskSummary& disk) {
    TileContent tile{QStringLiteral("internaldrive"), translated("Storage available"), {}, {}, {}, true, {}};
    if (disk.totalGB <= 0) {
        tile.value = translated("Not available");
        tile.detail = translated("The start-up disk can’t be read");
        tile.isKnown = false;
        return tile;
    }
    tile.value = QString::number(disk.freeGB);
    tile.unit = translated("GB");
    tile.detail = translated("%1% used of %2 GB", {QString::number(disk.pct), QString::number(disk.totalGB)});
    tile.drawing = TileBar{static_cast<double>(disk.pct) / 100};
    return tile;
}

TileContent networkTile(const WorkspaceStore& store) {
    TileContent tile{QStringLiteral("arrow.up.arrow.down"), translated("Network"), {}, {}, {}, true, {}};
    const auto down = store.downloadRate.get();
    const auto up = store.uploadRate.get();
    if (!down || !up) {
        tile.value = translated("Sampling…");
        tile.detail = translated("Wi-Fi / Ethernet interfaces");
        tile.isKnown = false;
        return tile;
    }
    const QString text = rateText(*down) + QStringLiteral(" ↓");
    const qsizetype space = text.indexOf(QLatin1Char(' '));
    tile.value = text.left(space);
    tile.unit = text.mid(space + 1);
    tile.detail = translated("%1 ↑ · Wi-Fi / Ethernet", {rateText(*up)});
    const auto& history = store.telemetryHistory.get();
    const Figure received = [](const TelemetrySample& sample) { return sample.downloadRate; };
    const Figure sent = [](const TelemetrySample& sample) { return sample.uploadRate; };
    const double scale = highest(history, sent, highest(history, received, quietNetwork));
    tile.drawing = Sparkline{curve(history, received, scale), curve(history, sent, scale)};
    return tile;
}

TileContent batteryTile(const std::optional<BatteryReading>& battery) {
    TileContent tile{QStringLiteral("battery.100"), translated("Battery"), {}, {}, {}, true, {}};
    if (!battery) {
        tile.value = translated("Not available");
        tile.detail = translated("No battery reported");
        tile.isKnown = false;
        return tile;
    }
    if (battery->percent <= lowBattery) {
        tile.symbol = QStringLiteral("battery.25");
    }
    tile.value = QString::number(battery->percent);
    tile.unit = QStringLiteral("%");
    tile.detail = translated(battery->source);
    tile.drawing = TileBar{battery->percent / 100.0};
    return tile;
}

}  // namespace

QList<TileContent> telemetryTiles(const WorkspaceStore& store) {
    const auto& history = store.telemetryHistory.get();
    const Figure memory = [](const TelemetrySample& sample) { return std::optional<double>(sample.memoryPercent); };
    const Figure processor = [](const TelemetrySample& sample) { return std::optional<double>(sample.cpuPercent); };
    const QString available = translated("%1 GB available", {oneDecimal(store.availableMemoryGB.get())});
    return {percentTile("memorychip", translated("Memory usage"), store.memoryPercent.get(), available,
                        {curve(history, memory, 100), {}}),
            pressureTile(store.pressure.get()),
            storageTile(store.disk.get()),
            percentTile("cpu", translated("CPU usage"), store.cpuPercent.get(), translated("Your Mac’s total CPU load"),
                        {curve(history, processor, 100), {}}),
            networkTile(store),
            batteryTile(store.batteryReading.get())};
}

}  // namespace kestrune
