#pragma once

#include <QApplication>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/fakes/StoreFixture.h"
#include "tests/ui/RunningItems.h"
#include "ui/AlertDialog.h"
#include "ui/PortReviewWindow.h"
#include "ui/QtUpdatePresenter.h"
#include "ui/WorkspaceWindow.h"

namespace kestrune {

/// A store with something on every page.
inline void fillEveryPage(StoreFixture& fixture) {
    constexpr std::int64_t megabyte = 1'000'000;
    fixture.addCache("Gradle Caches", 6'310 * megabyte);
    fixture.addCache("NPM Global Cache", 2'740 * megabyte);
    fixture.addCache("Ollama Models", 11'930 * megabyte);
    fixture.scan();
    const std::string folder = "/home/anna/Projects/shop";
    TreeWalk& walk = fixture.walker.walks[folder];
    walk.exists = walk.opened = true;
    walk.bytes = 9'000 * megabyte;
    walk.children = {{"client", 6'000 * megabyte, true}, {"film.mov", 3'000 * megabyte, false}};
    walk.largestFiles = {{"film.mov", 3'000 * megabyte, false}};
    fixture.store().explore(folder);
    fixture.settle();
    fixture.store().running.set({runningApp(7, "Editor", 900), runningProcess(8, "ollama", 400, {"127.0.0.1:11434"}),
                                 runningProcess(9, "node", 300, {"*:3000"})});
    fixture.store().processesListed.set(true);
    fixture.store().protectedApps.set({"ollama"});
    fixture.store().telemetryHistory.set({});
    fixture.store().downloadRate.set(2'400'000);
    fixture.store().uploadRate.set(318'000);
    fixture.store().batteryReading.set(BatteryReading{84, "On battery"});
    ActivityEntry entry;
    entry.id = "1";
    entry.date = fixture.clock.now();
    entry.title = "Moved Gradle Caches to Trash";
    entry.detail = "6.31 GB estimated.";
    entry.trashPath = "/home/anna/.local/share/Trash/files/1";
    fixture.store().history.set({entry});
}

/// Everything of the program that has a window, one after the other: each page full and empty, the port window, the
/// states of the window about updates, and a question.
class EverySight {
public:
    using Look = std::function<void(const std::string& name, QWidget& window)>;

    static void visit(const Look& look) {
        for (const bool isFull : {true, false}) {
            for (const WorkspacePage page : allWorkspacePages) {
                StoreFixture fixture;
                prepare(fixture, isFull);
                fixture.store().page.set(page);
                WorkspaceWindow window(fixture.store(), {});
                show(window);
                look(std::string(rawValue(page)) + (isFull ? ", full" : ", empty"), window);
            }
            StoreFixture fixture;
            prepare(fixture, isFull);
            PortReviewWindow window(fixture.store());
            show(window);
            look(isFull ? "ports, full" : "ports, empty", window);
        }
        visitUpdates(look);
        visitAlert(look);
    }

private:
    static void prepare(StoreFixture& fixture, bool isFull) {
        if (isFull) {
            fillEveryPage(fixture);
        }
    }

    template <typename Window>
    static void show(Window& window) {
        window.present();
        for (int pass = 0; pass < 4; ++pass) {
            QApplication::processEvents();
        }
    }

    static void visitUpdates(const Look& look) {
        QtUpdatePresenter presenter([] {});
        UpdateItem item;
        item.displayVersion = "2.2.0";
        item.notes = "Faster scans";
        const auto see = [&](const std::string& name) {
            QApplication::processEvents();
            look(name, *presenter.window());
        };
        presenter.showChecking([] {});
        see("update, checking");
        presenter.showUpdate(item, "2.1.0", [](UpdateChoice) {});
        see("update, found");
        presenter.showDownload(item, [] {});
        presenter.setDownloaded(1'000'000, 4'000'000);
        see("update, downloading");
        presenter.showInstalling(item);
        see("update, installing");
        presenter.showReadyToRelaunch(item, [] {});
        see("update, ready");
    }

    static void visitAlert(const Look& look) {
        Alert alert;
        alert.symbol = "trash";
        alert.messageText = "Move 1 item to Trash?";
        alert.items = {{"Gradle Caches", "6.31 GB", "Downloaded packages"}};
        alert.text = "Close the tools using these files first.";
        alert.buttons = {"Move to Trash", "Cancel"};
        AlertDialog dialog(alert);
        dialog.show();
        QApplication::processEvents();
        look("alert", dialog);
    }
};

}  // namespace kestrune
