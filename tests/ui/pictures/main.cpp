#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/LinuxTranslation.h"
#include "tests/fakes/StoreFixture.h"
#include "tests/ui/pictures/AlertScenes.h"
#include "tests/ui/pictures/ExplorerScenes.h"
#include "tests/ui/pictures/RunningScenes.h"
#include "tests/ui/pictures/SettingsScenes.h"
#include "tests/ui/pictures/UpdateScenes.h"
#include "ui/AlertDialog.h"
#include "ui/Metrics.h"
#include "ui/Motion.h"
#include "ui/PortReviewWindow.h"
#include "ui/Theme.h"
#include "ui/UpdateWindow.h"
#include "ui/WorkspaceWindow.h"

namespace {

using namespace kestrune;

constexpr std::int64_t megabyte = 1'000'000;

struct Look {
    bool dark;
    QSize size;
};

struct Scene {
    const char* name;
    std::function<void(StoreFixture&)> prepare;
    std::function<void(StoreFixture&, QWidget&)> act = {};  // once the window is shown
};

void addCaches(StoreFixture& fixture) {
    fixture.addCache("Xcode DerivedData", 18'420 * megabyte);
    fixture.addCache("Hugging Face Hub Cache", 14'070 * megabyte);
    fixture.addCache("Ollama Models", 11'930 * megabyte);
    fixture.addCache("Gradle Caches", 6'310 * megabyte);
    fixture.addCache("Xcode iOS DeviceSupport", 4'860 * megabyte);
    fixture.addCache("NPM Global Cache", 2'740 * megabyte);
    fixture.addCache("Cargo Registry Cache", 1'120 * megabyte);
    fixture.addCache("User Logs", 348 * megabyte);
    fixture.addCache("Bun Install Cache", 214 * megabyte);
}

void choose(StoreFixture& fixture) {
    for (const char* title : {"Xcode DerivedData", "Gradle Caches", "NPM Global Cache"}) {
        fixture.store().setSelected(fixture.pathOf(title), true);
    }
}

void addFigures(WorkspaceStore& store) {
    std::vector<TelemetrySample> history;
    for (int beat = 0; beat < 60; ++beat) {
        const double turn = beat / 6.0;
        history.push_back({Seconds{beat * 5.0}, 63 + static_cast<int>(3 * std::sin(turn)),
                           18 + static_cast<int>(9 * std::sin(turn * 2.3) * std::cos(turn)),
                           1.6e6 + 8e5 * std::sin(turn), 9e5 + 6e5 * std::cos(turn * 1.4)});
    }
    store.telemetryHistory.set(history);
    store.memoryPercent.set(63);
    store.availableMemoryGB.set(11.8);
    store.cpuPercent.set(18);
    store.downloadRate.set(2'400'000);
    store.uploadRate.set(318'000);
    store.batteryReading.set(BatteryReading{84, "On battery"});
    store.disk.set(DiskSummary{282, 494, 57, 212});
    store.pressure.set("Normal");
}

void addHistory(StoreFixture& fixture, int count) {
    constexpr std::array<const char*, 4> titles{"Moved Xcode DerivedData to Trash", "Moved Gradle Caches to Trash",
                                                "Couldn't move NPM Global Cache", "Inactive memory cleared"};
    constexpr std::array<const char*, 4> details{
        "18.42 GB estimated. Empty Trash in Finder when you're ready to reclaim space.",
        "6.31 GB estimated. Empty Trash in Finder when you're ready to reclaim space.",
        "This item is no longer present. Rescan to update the list.",
        "macOS completed the purge command; memory will be reused as needed."};
    std::vector<ActivityEntry> history;
    for (int index = 0; index < count; ++index) {
        const auto kind = static_cast<std::size_t>(index % 4);
        ActivityEntry entry;
        entry.id = std::to_string(index);
        entry.date = fixture.clock.now() - Seconds{index * 9000.0};
        entry.title = titles.at(kind);
        entry.detail = details.at(kind);
        entry.failed = kind == 2;
        if (kind < 2) {
            entry.trashPath = "/home/anna/.local/share/Trash/files/" + std::to_string(index);
        }
        history.push_back(entry);
    }
    fixture.store().history.set(history);
}

void addLengthyHistory(StoreFixture& fixture) {
    addHistory(fixture, 3);
    std::vector<ActivityEntry> history = fixture.store().history.get();
    history.at(0).title = "Moved a cache & folder <b>whose</b> name goes on and on without an end in sight to Trash";
    history.at(1).detail =
        "The file system that holds this item is mounted read-only, and nothing on it can be moved before it is "
        "mounted for writing again. " +
        std::string(120, 'x');
    fixture.store().history.set(history);
}

void full(StoreFixture& fixture) {
    addCaches(fixture);
    fixture.scan();
    choose(fixture);
    addFigures(fixture.store());
}

std::vector<Scene> scenes() {
    const auto on = [](WorkspacePage page, std::function<void(StoreFixture&)> prepare) {
        return [page, prepare](StoreFixture& fixture) {
            prepare(fixture);
            fixture.store().page.set(page);
        };
    };
    using P = WorkspacePage;
    const auto unscanned = [](StoreFixture& fixture) { fixture.store().memoryPercent.set(41); };
    const auto scanning = [](StoreFixture& fixture) {
        addFigures(fixture.store());
        fixture.store().scan();
        fixture.store().operationProgress.set({3, 20, "Gradle Caches"});
    };
    const auto cleaning = [](StoreFixture& fixture) {
        full(fixture);
        fixture.store().scanNotes.set({"Some files couldn't be inspected in Logs. Size may be incomplete."});
        fixture.store().clean();
        fixture.store().progress.set("Moving 2 of 3 · Gradle Caches");
        fixture.store().operationProgress.set({1, 3, "Gradle Caches"});
    };
    const auto notes = [](StoreFixture& fixture) {
        full(fixture);
        const auto& targets = fixture.store().targets.get();
        fixture.store().scanNotes.set({"Some files couldn't be inspected in Logs. Size may be incomplete.",
                                       "Couldn't inspect Ollama Models. Check access in System Settings."});
        fixture.store().failures.set({{fixture.pathOf("Gradle Caches"),
                                       "This location is protected or has changed. Rescan before continuing."}});
        fixture.store().toggleExclusion(targets.at(1));
        fixture.store().message.set("Moved 2 items to Trash. 1 failed.");
    };
    const auto lengthy = [](StoreFixture& fixture) {
        full(fixture);
        std::vector<CleanTarget> targets = fixture.store().targets.get();
        targets.at(0).title = "A cache & folder <b>whose</b> name goes on and on without an end in sight, far too long";
        targets.at(1).title = "A model folder whose name goes on and on without an end in sight, far too long";
        targets.at(0).path = "/home/anna/" + std::string(180, 'x') + "/DerivedData";
        targets.at(2).sizeBytes = 999'990 * megabyte;
        fixture.store().targets.set(targets);
        fixture.store().failures.set(
            {{targets.at(3).id(),
              "The file system that holds this item is mounted read-only, and nothing on it can be "
              "moved before it is mounted for writing again. Ask the owner of this computer."}});
        fixture.store().message.set(
            "Close these apps before cleaning their files: Xcode, Simulator, Android Studio, "
            "IntelliJ IDEA, LM Studio, Ollama, ComfyUI and a few more of them & others");
    };
    std::vector<Scene> all{
        {"overview-unscanned", on(P::overview, unscanned)},
        {"overview-scanning", on(P::overview, scanning)},
        {"overview", on(P::overview, full)},
        {"storage-unscanned", on(P::storage, unscanned)},
        {"storage-scanning", on(P::storage, scanning)},
        {"storage-empty", on(P::storage, [](StoreFixture& fixture) { fixture.scan(); })},
        {"storage", on(P::storage, full)},
        {"storage-cleaning", on(P::storage, cleaning)},
        {"storage-notes", on(P::storage, notes)},
        {"storage-long", on(P::storage, lengthy)},
        {"activity-empty", on(P::activity, unscanned)},
        {"activity", on(P::activity, [](StoreFixture& fixture) { addHistory(fixture, 7); })},
        {"activity-100", on(P::activity, [](StoreFixture& fixture) { addHistory(fixture, 100); })},
        {"activity-long", on(P::activity, [](StoreFixture& fixture) { addLengthyHistory(fixture); })},
    };
    for (const SettingsScene& scene : automationScenes()) {
        all.push_back({scene.name, on(P::automation, scene.prepare)});
    }
    for (const SettingsScene& scene : settingsScenes()) {
        all.push_back({scene.name, on(P::settings, scene.prepare)});
    }
    for (const RunningScene& scene : runningAppsScenes()) {
        all.push_back({scene.name, on(P::apps, scene.prepare)});
    }
    for (const RunningScene& scene : aiToolsScenes()) {
        all.push_back({scene.name, on(P::ai, scene.prepare)});
    }
    for (const ExplorerScene& scene : explorerScenes()) {
        all.push_back({scene.name, on(P::explorer, scene.prepare), scene.act});
    }
    return all;
}

void save(QWidget& widget, const QString& path) {
    QApplication::processEvents();
    if (!widget.grab().save(path)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(path));
        std::exit(1);
    }
}

Alert alertWith(int items) {
    Alert alert;
    alert.style = AlertStyle::warning;
    alert.symbol = "trash";
    alert.messageText = "Move " + std::to_string(items) + " items to Trash?";
    for (int index = 0; index < items; ++index) {
        alert.items.push_back({index % 2 == 0 ? "NPM Global Cache" : "Gradle Caches", "6.31 GB",
                               "Downloaded packages and cached builds — recreated when needed"});
    }
    alert.text =
        "Close the tools using these files first. Builds may need to rebuild caches; models may require another "
        "download. Space is recovered only after Trash is emptied. You can restore eligible items from Finder's Trash.";
    alert.buttons = {"Move to Trash", "Cancel"};
    return alert;
}

QString suffixOf(const Look& look) {
    return QStringLiteral("-%1-%2")
        .arg(look.dark ? QStringLiteral("dark") : QStringLiteral("light"))
        .arg(look.size.width());
}

void takeAll(const QDir& folder, const Look& look, const QString& start) {
    Theme::setDark(look.dark);
    const QString suffix = suffixOf(look);
    for (const Scene& scene : scenes()) {
        if (!QLatin1String(scene.name).startsWith(start)) {
            continue;
        }
        StoreFixture fixture;
        scene.prepare(fixture);
        WorkspaceWindow window(fixture.store(), {});
        window.resize(look.size);
        window.present();
        if (scene.act) {
            QApplication::processEvents();
            scene.act(fixture, window);
        }
        save(window, folder.filePath(QLatin1String(scene.name) + suffix + QStringLiteral(".png")));
        fixture.settle();
    }
}

void takeAlerts(const QDir& folder, bool dark, const QString& start) {
    Theme::setDark(dark);
    std::vector<AlertScene> all = alertScenes();
    all.push_back({"alert-1", alertWith(1)});
    all.push_back({"alert-3", alertWith(3)});
    all.push_back({"alert-20", alertWith(20)});
    for (const AlertScene& scene : all) {
        if (!QLatin1String(scene.name).startsWith(start)) {
            continue;
        }
        AlertDialog dialog(scene.alert);
        dialog.show();
        const QString tone = dark ? QStringLiteral("-dark.png") : QStringLiteral("-light.png");
        save(dialog, folder.filePath(QLatin1String(scene.name) + tone));
    }
}

void takeUpdates(const QDir& folder, bool dark, const QString& start) {
    Theme::setDark(dark);
    QtUpdatePresenter presenter([] {});
    for (const UpdateScene& scene : updateScenes()) {
        if (!QLatin1String(scene.name).startsWith(start)) {
            continue;
        }
        scene.show(presenter);
        const QString tone = dark ? QStringLiteral("-dark.png") : QStringLiteral("-light.png");
        save(*presenter.window(), folder.filePath(QLatin1String(scene.name) + tone));
    }
}

void takePorts(const QDir& folder, const Look& look, const QString& start) {
    Theme::setDark(look.dark);
    for (const RunningScene& scene : portScenes()) {
        if (!QLatin1String(scene.name).startsWith(start)) {
            continue;
        }
        StoreFixture fixture;
        scene.prepare(fixture);
        PortReviewWindow window(fixture.store());
        window.resize(look.size);
        window.present();
        save(window, folder.filePath(QLatin1String(scene.name) + suffixOf(look) + QStringLiteral(".png")));
        fixture.settle();
    }
}

}  // namespace

// kestrune-pictures <folder> [body pixels] [font family] [start of the names wanted]; QT_SCALE_FACTOR=2 makes them
// twice as fine, LANGUAGE=de gives them in that language, -reverse as people see them who read from right to left.
int main(int argc, char** argv) {
    LinuxTranslation::install();
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2 || !QDir().mkpath(arguments.at(1))) {
        std::fprintf(stderr, "usage: kestrune-pictures <folder> [body pixels] [font family] [names]\n");
        return 2;
    }
    QFont font = QApplication::font();
    if (arguments.size() > 2) {
        font.setPixelSize(arguments.at(2).toInt());
    }
    if (!arguments.value(3).isEmpty()) {
        font.setFamily(arguments.at(3));
    }
    QApplication::setFont(font);
    Metrics::reset();
    const QDir folder(arguments.at(1));
    const QString start = arguments.value(4);
    for (const bool dark : {false, true}) {
        for (const QSize size : {QSize(1040, 720), QSize(880, 620)}) {
            takeAll(folder, {dark, size}, start);
        }
        for (const QSize size : {QSize(580, 440), QSize(480, 320)}) {
            takePorts(folder, {dark, size}, start);
        }
        takeAlerts(folder, dark, start);
        takeUpdates(folder, dark, start);
    }
    return 0;
}
