#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "engine/SystemEngine.h"
#include "storage/DevCleaners.h"
#include "tests/fakes/FakeAlertPresenter.h"
#include "tests/fakes/FakeDirectoryWalker.h"
#include "tests/fakes/FakeFileQueries.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakeFileViewer.h"
#include "tests/fakes/FakeFolderChooser.h"
#include "tests/fakes/FakeHostStatistics.h"
#include "tests/fakes/FakeLinkOpener.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeMemoryPressureSource.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakePowerSources.h"
#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeProcessControl.h"
#include "tests/fakes/FakeProcessListing.h"
#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/FakeRunningApplications.h"
#include "tests/fakes/FakeRunningPrograms.h"
#include "tests/fakes/FakeSystemTools.h"
#include "tests/fakes/FakeTrash.h"
#include "tests/fakes/FakeVolumeInfo.h"
#include "tests/fakes/ManualQueues.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

/// A store on fakes only. It is made at its first use, so that a test can lay down settings and files before.
class StoreFixture {
public:
    StoreFixture() { volumes.volumes["/"] = {500'000'000'000, 100'000'000'000}; }

    StoreFixture(const StoreFixture&) = delete;
    StoreFixture& operator=(const StoreFixture&) = delete;
    ~StoreFixture() = default;

    [[nodiscard]] WorkspaceStore& store() {
        if (!m_store) {
            m_store = std::make_unique<WorkspaceStore>(parts());
        }
        return *m_store;
    }

    /// Lets go of the store, as at the program's end.
    void endStore() {
        m_store.reset();
        m_actions = nullptr;
        m_explorer = nullptr;
    }

    /// The action queue; only while the store lives.
    [[nodiscard]] ManualSerialQueue& actions() {
        static_cast<void>(store());
        return *m_actions;
    }

    /// The disk explorer's queue; only while the store lives.
    [[nodiscard]] ManualSerialQueue& explorations() {
        static_cast<void>(store());
        return *m_explorer;
    }

    /// Runs everything that waits, on both sides, until nothing does.
    void settle() {
        static_cast<void>(store());
        do {
            mainQueue.runPosted();
        } while (m_actions->runOne() || m_explorer->runOne());
    }

    void scan() {
        store().scan();
        settle();
    }

    /// The catalog's location with this title, as an absolute path.
    [[nodiscard]] std::string pathOf(std::string_view title) const { return cleaners.path(entryOf(title)); }

    /// Lays a folder of this size down at the catalog's location with this title, and answers its path.
    std::string addCache(std::string_view title, std::int64_t bytes) {
        const std::string path = pathOf(title);
        fileQueries.addDirectory(path);
        walker.add(path, bytes);
        return path;
    }

    /// Takes away what addCache laid down.
    void removeCache(std::string_view title) {
        fileQueries.remove(pathOf(title));
        trash.missing.insert(pathOf(title));
    }

    using MakeQueue = std::function<std::unique_ptr<SerialQueue>(const std::string& label)>;

    /// The parts of a store whose queues have threads, for a test that is about them.
    WorkspaceStoreParts partsOnThreads() {
        return partsWith(engine, [](const std::string& label) { return std::make_unique<ThreadSerialQueue>(label); });
    }

    /// The parts of a store with another engine, for a test that is about the machine's own figures.
    WorkspaceStoreParts partsWith(SystemEngine& itsEngine, MakeQueue makeQueue) {
        return {
            itsEngine,     cleaners,     preferences, fileStore, fileQueries,    fileViewer,           walker,
            folderChooser, applications, programs,    processes, processControl, systemTools,          memoryPressure,
            alerts,        trash,        linkOpener,  mainQueue, clock,          std::move(makeQueue), {}};
    }

    static constexpr std::int32_t ownProcess = 4711;

    const std::string home = "/home/anna";
    ManualMainQueue mainQueue;
    ManualClock clock;
    FakeHostStatistics hostStatistics;
    FakePowerSources powerSources;
    FakeVolumeInfo volumes;
    FakeProcessRunner processRunner;
    FakeSystemTools systemTools;
    FakePreferences preferences;
    FakeNotificationCenter notificationCenter;
    FakeFileQueries fileQueries;
    FakeDirectoryWalker walker;
    FakeTrash trash;
    FakeLoginItem loginItem;
    FakeLinkOpener linkOpener;
    FakeFileStore fileStore;
    FakeFileViewer fileViewer;
    FakeFolderChooser folderChooser;
    FakeRunningApplications applications;
    FakeRunningPrograms programs;
    FakeProcessListing processes;
    FakeProcessControl processControl;
    FakeMemoryPressureSource memoryPressure;
    FakeAlertPresenter alerts;
    SystemEngine engine{{hostStatistics, powerSources, volumes, processRunner, systemTools, preferences,
                         notificationCenter, clock, mainQueue, applications, trash, loginItem, home, ownProcess}};
    DevCleaners cleaners{home, {fileQueries, walker, trash, processRunner, systemTools}};

private:
    static const CatalogEntry& entryOf(std::string_view title) {
        for (const auto& list : {DevCleaners::aiCandidates, DevCleaners::devCandidates, DevCleaners::sysCandidates}) {
            for (const auto& entry : list) {
                if (entry.title == title) {
                    return entry;
                }
            }
        }
        throw std::invalid_argument("no such catalog entry: " + std::string(title));
    }

    WorkspaceStoreParts parts() {
        return partsWith(engine, [this](const std::string& label) {
            auto queue = std::make_unique<ManualSerialQueue>(label);
            (label == "com.torvandelsyn.kestrune.actions" ? m_actions : m_explorer) = queue.get();
            return queue;
        });
    }

    std::unique_ptr<WorkspaceStore> m_store;
    ManualSerialQueue* m_actions = nullptr;  ///< owned by the store
    ManualSerialQueue* m_explorer = nullptr;
};

}  // namespace kestrune
