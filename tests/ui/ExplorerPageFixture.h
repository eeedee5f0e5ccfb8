#pragma once

#include <QTimer>
#include <QTimerEvent>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/WindowFixture.h"
#include "ui/ExplorerFindings.h"
#include "ui/ExplorerList.h"
#include "ui/ExplorerPage.h"
#include "ui/ExplorerRowView.h"
#include "ui/ScrollArea.h"
#include "ui/TreemapView.h"

namespace kestrune {

/// The Disk Explorer page over folders that the test lays down.
class ExplorerPageFixture : public WindowFixture {
protected:
    using Children = std::vector<WalkedItem>;

    /// Lays down what a walk of folder finds.
    TreeWalk& lay(const std::string& folder, Children children, Children largestFiles = {}) {
        TreeWalk& walk = fixture.walker.walks[folder];
        walk = {};
        walk.exists = walk.opened = true;
        for (const WalkedItem& child : children) {
            walk.bytes += child.bytes;
        }
        walk.entries = static_cast<std::int64_t>(children.size());
        walk.files = static_cast<std::int64_t>(largestFiles.size());
        walk.children = std::move(children);
        walk.largestFiles = std::move(largestFiles);
        return walk;
    }

    TreeWalk& layProjects() {
        lay(projects + "/client-app", {{"build", 30 * gigabyte, true}, {"src", 8 * gigabyte, true}},
            {{"build/client.ipa", 5 * gigabyte, false}});
        lay("/home/anna", {{"Projects", 60 * gigabyte, true}});
        return lay(projects,
                   {{"client-app", 38 * gigabyte, true},
                    {"mobile", 12 * gigabyte, true},
                    {"dataset.parquet", 10 * gigabyte, false}},
                   {{"dataset.parquet", 10 * gigabyte, false}, {"client-app/build/client.ipa", 5 * gigabyte, false}});
    }

    void openExplored(const std::string& folder) {
        open(WorkspacePage::explorer);
        explore(folder);
    }

    void explore(const std::string& folder) {
        fixture.store().explore(folder);
        finish();
    }

    void finish() {
        fixture.settle();
        layOut();
    }

    /// What comes into view asks the body for room, which asks the scrolling area in turn.
    static void layOut() {
        for (int pass = 0; pass < 4; ++pass) {
            QApplication::processEvents();
        }
    }

    /// What a running scan tells before it ends.
    void tell(DiskExplorerProgress progress) {
        fixture.store().explorerProgress.set(std::move(progress));
        layOut();
    }

    [[nodiscard]] DiskExplorerProgress progressOf(std::int64_t entries, std::int64_t bytes) const {
        DiskExplorerProgress progress;
        progress.found.folders = {{projects + "/client-app", bytes, true}};
        progress.found.inspectedFiles = entries;
        progress.folder = projects + "/client-app/node_modules";
        return progress;
    }

    /// Lets the running timer of owner with this interval fall due.
    static void letPass(QObject& owner, int interval) {
        for (QTimer* timer : owner.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (timer->isActive() && timer->interval() == interval) {
                QTimerEvent due(timer->timerId());
                QApplication::sendEvent(timer, &due);
            }
        }
        QApplication::processEvents();
    }

    void letPatienceEnd() { letPass(page(), ExplorerPage::patience); }

    void letDoubleClickTimePass() {
        letPass(*window().findChild<ExplorerFindings*>(), QApplication::doubleClickInterval());
    }

    [[nodiscard]] ExplorerPage& page() { return *window().findChild<ExplorerPage*>(); }

    [[nodiscard]] TreemapView& picture() { return *window().findChild<TreemapView*>(); }

    [[nodiscard]] ExplorerRowView* rowOf(const std::string& path) {
        for (auto* row : window().findChildren<ExplorerRowView*>()) {
            if (row->isVisible() && row->row().path == path) {
                return row;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QPoint middleOfTile(const std::string& path) {
        return picture().tileRect(picture().indexOf(path).value_or(0)).center();
    }

    [[nodiscard]] std::string shownFolder() { return fixture.store().explorerRoot.get().value_or(""); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&window(), key, modifiers);
        QApplication::processEvents();
    }

    const std::string projects = "/home/anna/Projects";
};

}  // namespace kestrune
