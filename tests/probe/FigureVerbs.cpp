#include <QByteArray>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "engine/SystemEngine.h"
#include "platform/PlatformServices.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "tests/fakes/ManualQueues.h"
#include "tests/probe/ProbeText.h"
#include "tests/probe/Verbs.h"

namespace kestrune::probe {

namespace {

using Json = nlohmann::ordered_json;

Json memoryOf(const MemorySummary& memory) {
    return {{"freeMB", memory.freeMB}, {"totalMB", memory.totalMB}, {"pct", memory.pct}};
}

Json classesOf(const VMStat& stat) {
    return {{"free", stat.free},         {"active", stat.active}, {"wired", stat.wired},
            {"inactive", stat.inactive}, {"spec", stat.spec},     {"compressed", stat.compressed}};
}

Json diskOf(const DiskSummary& disk) {
    return {{"usedGB", disk.usedGB}, {"totalGB", disk.totalGB}, {"pct", disk.pct}, {"freeGB", disk.freeGB}};
}

Json networkOf(const std::optional<NetworkCounters>& counters) {
    return counters ? Json{{"received", counters->received}, {"sent", counters->sent}} : Json(nullptr);
}

Json batteryOf(const std::optional<BatteryReading>& battery) {
    return battery ? Json{{"percent", battery->percent}, {"source", escaped(battery->source)}} : Json(nullptr);
}

}  // namespace

int runProcess(const Arguments& arguments) {
    if (arguments.empty()) {
        return misused;
    }
    LinuxProcessRunner runner;
    const ProcessResult result = runner.run(arguments[0], Arguments(arguments.begin() + 1, arguments.end()));
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(result.output), QCryptographicHash::Sha256).toHex();
    std::printf("status=%d bytes=%zu sha256=%s\n", result.status, result.output.size(), hash.constData());
    return succeeded;
}

int telemetry(const Arguments& arguments) {
    if (!arguments.empty()) {
        return misused;
    }
    // The notification service wants an application object to live in.
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const PlatformServices services = makePlatformServices();
    const SystemClock clock;
    ManualMainQueue mainQueue;
    SystemEngine engine({*services.hostStatistics, *services.powerSources, *services.volumeInfo,
                         *services.processRunner, *services.systemTools, *services.preferences,
                         *services.notificationCenter, clock, mainQueue, *services.runningApplications, *services.trash,
                         *services.loginItem, services.homeDirectory, services.processIdentifier});
    const Json figures{{"memory", memoryOf(engine.getMemorySummary())},
                       {"classes", classesOf(engine.getVMStat())},
                       {"cpu", engine.getCPULoadPercentage()},
                       {"disk", diskOf(engine.getDiskSummary())},
                       {"uptime", engine.getUptimeString()},
                       {"network", networkOf(engine.networkCounters())},
                       {"battery", batteryOf(engine.battery())}};
    std::puts(figures.dump().c_str());
    return succeeded;
}

}  // namespace kestrune::probe
