#include "tests/ui/pictures/ExplorerScenes.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTimer>
#include <QTimerEvent>
#include <string>
#include <utility>

#include "ui/Disclosure.h"
#include "ui/ExplorerPage.h"
#include "ui/ScrollArea.h"
#include "ui/TreemapView.h"

namespace kestrune {

namespace {

constexpr std::int64_t megabyte = 1'000'000;
const std::string root = "/home/anna/Projects";

TreeWalk& lay(StoreFixture& fixture, const std::string& folder, std::vector<WalkedItem> children,
              std::vector<WalkedItem> files = {}) {
    TreeWalk& walk = fixture.walker.walks[folder];
    walk = {};
    walk.exists = walk.opened = true;
    for (const WalkedItem& child : children) {
        walk.bytes += child.bytes;
    }
    walk.entries = 184'236;
    walk.files = 161'902;
    walk.children = std::move(children);
    walk.largestFiles = std::move(files);
    return walk;
}

std::vector<WalkedItem> ordinary() {
    return {{"client-app", 38'400 * megabyte, true},
            {"archive-2024.sparsebundle", 21'700 * megabyte, true},
            {"model-lab", 17'900 * megabyte, true},
            {"mobile", 12'200 * megabyte, true},
            {"video-captures", 9'600 * megabyte, true},
            {"containers", 6'100 * megabyte, true},
            {"dataset-v3.parquet", 4'800 * megabyte, false},
            {"design", 3'100 * megabyte, true},
            {"playground", 2'600 * megabyte, true},
            {"datasets", 1'900 * megabyte, true},
            {"shop", 1'500 * megabyte, true},
            {"notes", 1'200 * megabyte, true},
            {"fonts", 900 * megabyte, true},
            {"scripts", 700 * megabyte, true},
            {"tmp", 600 * megabyte, true},
            {"old-site", 450 * megabyte, true}};
}

std::vector<WalkedItem> ordinaryFiles() {
    return {{"model-lab/checkpoints/base-weights.safetensors", 9'400 * megabyte, false},
            {"client-app/build/archives/client-app-2024-11.ipa", 5'200 * megabyte, false},
            {"dataset-v3.parquet", 4'800 * megabyte, false},
            {"mobile/avd/emulator-system.img", 4'100 * megabyte, false},
            {"video-captures/standup-0914.mov", 3'300 * megabyte, false}};
}

void explore(StoreFixture& fixture, const std::string& folder = root) {
    fixture.store().explore(folder);
    fixture.settle();
}

void begin(StoreFixture& fixture, std::int64_t entries) {
    lay(fixture, root, ordinary(), ordinaryFiles());
    explore(fixture);
    DiskExplorerProgress progress{fixture.store().explorerResult.get(),
                                  root + "/client-app/node_modules/typescript/lib/generated/locales/pt-br"};
    progress.found.largestFiles.clear();
    progress.found.inspectedFiles = entries;
    fixture.store().explore(root);
    fixture.store().explorerProgress.set(progress);
}

void hostile(StoreFixture& fixture) {
    const std::string folder = "/home/anna/" + std::string(180, 'W') + "/a/b/c/d/<b>Bold</b> & Sons";
    lay(fixture, folder,
        {{"\xff\xfe bytes \xc3", 9'000 * megabyte, true},
         {"\xff\xfd bytes \xc3", 8'000 * megabyte, true},
         {std::string(250, 'm'), 7'000 * megabyte, true},
         {"two\nlines\tand a tab", 5'000 * megabyte, false},
         {"<b>Bold</b> & <a href='x'>link</a> &File", 3'000 * megabyte, true},
         {"日本語のフォルダー", 2'000 * megabyte, true},
         {"\xe2\x80\xae"
          "drawkcab",
          1'000 * megabyte, true}},
        {{std::string(200, 'd') + "/" + std::string(200, 'e') + "/" + std::string(250, 'f'), 7'000 * megabyte, false},
         {"\xff\xfe bytes \xc3/\xff", 6'000 * megabyte, false}});
    explore(fixture, folder);
}

void letPatienceEnd(StoreFixture& /*fixture*/, QWidget& window) {
    for (QTimer* timer :
         window.findChild<ExplorerPage*>()->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (timer->isActive()) {
            QTimerEvent due(timer->timerId());
            QApplication::sendEvent(timer, &due);
        }
    }
}

void drag(StoreFixture& /*fixture*/, QWidget& window) {
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "file:///tmp");
    QDragEnterEvent event(QPoint(50, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.findChild<ExplorerPage*>(), &event);
}

void scrollToTheEnd(StoreFixture& /*fixture*/, QWidget& window) {
    window.findChild<Disclosure*>()->setOpen(true);
    for (int pass = 0; pass < 4; ++pass) {
        QApplication::processEvents();  // the body asks the scrolling area for room
    }
    QScrollBar* bar = window.findChild<ExplorerPage*>()->scrollArea()->verticalScrollBar();
    bar->setValue(bar->maximum());
}

}  // namespace

std::vector<ExplorerScene> explorerScenes() {
    const auto full = [](StoreFixture& fixture) {
        lay(fixture, root, ordinary(), ordinaryFiles());
        explore(fixture);
    };
    const auto incomplete = [](StoreFixture& fixture) {
        lay(fixture, root, ordinary(), ordinaryFiles()).unreadable = 12;
        explore(fixture);
    };
    const auto cut = [](StoreFixture& fixture) {
        std::vector<WalkedItem> many;
        for (int index = 0; index < 200; ++index) {
            many.push_back({"folder " + std::to_string(index), (400 - index) * megabyte, true});
        }
        lay(fixture, root, many, ordinaryFiles());
        explore(fixture);
    };
    return {
        {"explorer-empty", [](StoreFixture&) {}, {}},
        {"explorer-drop", [](StoreFixture&) {}, drag},
        {"explorer-scanning", [](StoreFixture& fixture) { fixture.store().explore(root); }, letPatienceEnd},
        {"explorer-growing", [](StoreFixture& fixture) { begin(fixture, 84'201); }, {}},
        {"explorer", full, {}},
        {"explorer-drop-result", full, drag},
        {"explorer-scrolled", full, scrollToTheEnd},
        {"explorer-remembered",
         [](StoreFixture& fixture) {
             lay(fixture, root + "/client-app",
                 {{"build", 20'000 * megabyte, true},
                  {"node_modules", 12'000 * megabyte, true},
                  {".git", 4'000 * megabyte, true},
                  {"src", 2'400 * megabyte, true}});
             explore(fixture, root + "/client-app");
             lay(fixture, root, ordinary(), ordinaryFiles());
             explore(fixture);
         },
         {}},
        {"explorer-incomplete", incomplete,
         [](StoreFixture&, QWidget& window) { window.findChild<TreemapView*>()->setHighlighted(root + "/model-lab"); }},
        {"explorer-unreadable",
         [](StoreFixture& fixture) {
             fixture.walker.walks["/root"].exists = true;
             explore(fixture, "/root");
         },
         {}},
        {"explorer-cut", cut, {}},
        {"explorer-cut-end", cut, scrollToTheEnd},
        {"explorer-hostile", hostile, {}}};
}

}  // namespace kestrune
