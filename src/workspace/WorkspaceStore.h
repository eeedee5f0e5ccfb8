#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/Clock.h"
#include "base/Localized.h"
#include "base/OperationCancellation.h"
#include "base/Published.h"
#include "base/SerialQueue.h"
#include "engine/SystemEngine.h"
#include "explorer/DiskExplorerProgress.h"
#include "explorer/DiskExplorerResult.h"
#include "explorer/ExplorerHistory.h"
#include "platform/AlertPresenter.h"
#include "platform/DirectoryWalker.h"
#include "platform/FileQueries.h"
#include "platform/FileStore.h"
#include "platform/FileViewer.h"
#include "platform/FolderChooser.h"
#include "platform/LinkOpener.h"
#include "platform/MainQueue.h"
#include "platform/MemoryPressureSource.h"
#include "platform/Preferences.h"
#include "platform/ProcessControl.h"
#include "platform/ProcessListing.h"
#include "platform/RunningApplications.h"
#include "platform/RunningPrograms.h"
#include "platform/SystemTools.h"
#include "storage/DevCleaners.h"
#include "workspace/ActivityEntry.h"
#include "workspace/HelpPages.h"
#include "workspace/RunningItem.h"
#include "workspace/TelemetryHistory.h"
#include "workspace/WorkspacePage.h"

namespace kestrune {

/// How far a scan or a cleanup is.
struct OperationProgress {
    int done = 0;   ///< locations measured, or items handled
    int total = 0;  ///< 0: nothing runs
    std::string title;

    bool operator==(const OperationProgress&) const = default;
};

/// What WorkspaceStore works with. Everything outlives it.
struct WorkspaceStoreParts {
    SystemEngine& engine;
    DevCleaners& cleaners;
    Preferences& preferences;
    FileStore& fileStore;
    FileQueries& fileQueries;
    FileViewer& fileViewer;
    DirectoryWalker& directoryWalker;
    FolderChooser& folderChooser;
    RunningApplications& runningApplications;
    RunningPrograms& runningPrograms;
    ProcessListing& processListing;
    ProcessControl& processControl;
    SystemTools& systemTools;
    MemoryPressureSource& memoryPressure;
    AlertPresenter& alerts;
    Trash& trash;
    LinkOpener& linkOpener;
    MainQueue& mainQueue;
    const Clock& clock;
    /// Makes the queue with this label.
    std::function<std::unique_ptr<SerialQueue>(const std::string& label)> makeQueue;
    HelpPages helpPages = {};
};

/// The one model behind the menu and the windows. Views read its published fields and call its operations; both on
/// the main thread only. Long work runs on queue (actions) and explorerQueue and comes back through the main queue.
class WorkspaceStore final {
public:
    using Action = std::function<void()>;

    /// Reads the stored settings and the activity log.
    explicit WorkspaceStore(WorkspaceStoreParts parts);

    /// Cancels what runs, waits for it and for every save, then lets go.
    ~WorkspaceStore();

    WorkspaceStore(const WorkspaceStore&) = delete;
    WorkspaceStore& operator=(const WorkspaceStore&) = delete;

    // Published state, in the order of its construction. Outside of the store only page, message, memoryPercent,
    // availableMemoryGB, disk, updateAvailable and updateStatus are set.

    Published<WorkspacePage> page{WorkspacePage::overview};
    Published<std::vector<CleanTarget>> targets;
    Published<std::optional<std::string>> explorerRoot;
    Published<DiskExplorerResult> explorerResult;
    Published<bool> isExploring{false};
    Published<std::optional<DiskExplorerProgress>> explorerProgress;  ///< nothing until a scan has something to tell
    Published<std::set<std::string>> selection;
    Published<std::vector<std::string>> scanNotes;
    Published<bool> isScanning{false};
    Published<bool> isCleaning{false};
    Published<bool> isPurging{false};
    Published<std::string> progress;
    Published<OperationProgress> operationProgress;
    Published<std::optional<std::string>> message;
    Published<std::map<std::string, std::string>> failures;  ///< by target id: why the last cleanup did not move it
    Published<std::optional<WallTime>> lastScan;
    Published<int> memoryPercent{0};
    Published<int> cpuPercent{0};
    Published<std::optional<double>> downloadRate;  ///< bytes per second
    Published<std::optional<double>> uploadRate;
    Published<std::optional<BatteryReading>> batteryReading;
    Published<double> availableMemoryGB{0};  ///< GiB
    Published<DiskSummary> disk;
    Published<std::vector<TelemetrySample>> telemetryHistory;
    Published<std::vector<RunningItem>> running;
    Published<bool> processesListed{false};  ///< running holds the result of a listing, perhaps an empty one
    Published<std::string> pressure{localizable("Observing")};  ///< in English, as are its other values
    Published<bool> updateAvailable{false};
    Published<std::string> updateStatus{localized("Automatic checks run daily.")};
    Published<std::vector<ActivityEntry>> history;
    Published<std::set<std::string>> excluded;
    Published<std::set<std::string>> protectedApps;
    Published<bool> reminders{false};
    Published<std::optional<WallTime>> lastReminder;
    Published<bool> reducedMotion{false};         ///< the user wants no animations
    Published<bool> launchesAtLogin{false};       ///< as of the last refreshSettings()
    Published<bool> notificationsAllowed{false};  ///< likewise

    /// Starts an update check; empty until the shell sets it.
    Action checkUpdates;

    // Monitoring.

    /// Starts the pressure source and the 60-second timer. Once, after launch.
    void startMonitoring();

    /// The timer's check: starts the daily review when it is due.
    void monitorTick();

    /// Reads processor, network and battery once. Called after memoryPercent, availableMemoryGB and disk were set.
    void refreshTelemetry();

    /// Turns the daily review on or off.
    void setReminders(bool on);

    // Settings.

    /// Reads anew what is kept elsewhere: launchesAtLogin, reducedMotion and, perhaps only later, notificationsAllowed.
    void refreshSettings();

    /// Turns starting at login on or off, whichever the system says it is not.
    void toggleLaunchAtLogin();

    void setReducedMotion(bool on);

    /// Asks the system to let notifications be shown, and reads what became of it.
    void enableNotifications();

    /// Each opens a page in the user's browser, or says in message why it cannot.
    void openHelp();
    void openUpdateHelp();
    void openReleaseNotes();

    // Storage.

    /// Measures the catalog, unless a scan, a cleanup or a confirmation is under way. onFinished runs after the
    /// results are published.
    void scan(Action onFinished = {});

    /// Asks, then moves what is selected to the Trash, one item at a time.
    void clean();

    /// A scan, then clean() over the saved folders or the recommended build caches.
    void quickClean(bool saved);

    /// Ends a running scan at its next entry, a running cleanup before its next item.
    void cancelCleanup();

    /// Names from runningNames that hold files of targets open, each once.
    [[nodiscard]] static std::vector<std::string> cleanupBlockers(const std::vector<CleanTarget>& targets,
                                                                  const std::vector<std::string>& runningNames);

    [[nodiscard]] std::vector<CleanTarget> visibleTargets() const;  ///< targets without the excluded ones
    [[nodiscard]] std::vector<CleanTarget> selected() const;
    [[nodiscard]] std::int64_t selectedBytes() const;
    [[nodiscard]] std::vector<CleanTarget> recommended() const;  ///< build caches that need no review
    [[nodiscard]] std::int64_t recommendedBytes() const;

    void setSelected(const std::string& id, bool on);
    void selectRecommended();
    void clearSelection();
    void toggleExclusion(const CleanTarget& target);
    void saveSelection();
    void restoreSelection();

    /// What the button does: restoreSelection(), or an alert when that leaves nothing selected. Without a saved list
    /// the selection stays as it is.
    void useSavedFolders();

    /// The ids written by saveSelection; empty when there are none.
    [[nodiscard]] std::vector<std::string> savedSelection() const;

    // Disk explorer. It only reads; nothing of it waits for the action queue. At a scan's end explorerResult is set
    // first, then isExploring, then explorerProgress is emptied, so that there is always something to show.

    /// Asks for a folder, then explores it. Nothing while a scan runs.
    void chooseExplorerFolder();

    /// Scans folder on explorerQueue and publishes, under the standard form of its path, what was found: meanwhile in
    /// explorerProgress, at the end in explorerResult. Nothing while a scan runs or when the path is not absolute.
    void explore(const std::string& folder);

    /// Ends the running scan, which then publishes what it has.
    void stopExploring();

    /// Explores explorerRoot again, or the folder above it. Nothing without one.
    void rescanExplorer();
    void exploreParent();

    /// Publishes the remembered visit before or after this one, without a scan. Nothing while a scan runs or where none
    /// is remembered.
    void goBackInExplorer();
    void goForwardInExplorer();

    /// Whether there is a visit to go to; never while a scan runs. Changes with explorerRoot and isExploring only.
    [[nodiscard]] bool canGoBackInExplorer() const;
    [[nodiscard]] bool canGoForwardInExplorer() const;

    /// What the newest remembered scan of folder found, which is in standard form; null when none is. Valid until the
    /// explorer changes.
    [[nodiscard]] const DiskExplorerResult* rememberedResult(const std::string& folder) const;

    // Running apps, AI tools and ports.

    /// Lists applications and developer processes anew into running, on the action queue. Nothing while a listing is
    /// under way.
    void refreshProcesses();

    /// The picture of item's application; empty when there is none. Looked for at the first question: ask for rows that
    /// are drawn only.
    [[nodiscard]] ApplicationIcon iconOf(const RunningItem& item);

    /// What is in the file at path, an answer of iconOf(): nothing when it is no regular file of at most 1 MiB.
    [[nodiscard]] std::optional<std::string> iconFile(const std::string& path) const;

    /// Whether a row is a local AI tool: by its name, or by the last part of its executable's path. Exact, but for the
    /// case of letters.
    [[nodiscard]] static bool isAIProcess(const std::string& name, const std::string& executable);

    /// Endpoints by process from lsof's field output.
    [[nodiscard]] static ListeningPorts listeningPorts(const std::string& output);

    // Quitting and stopping. Each asks first, and never ends what is protected.

    /// Asks row to quit, or ends it at once (force); a developer process gets a termination request either way.
    void quitApp(const RunningItem& row, bool force);

    /// Asks every other application to quit.
    void quitOtherApps();

    /// Whether "Quit Other Apps" may ask this application: regular, not this program, not protected.
    [[nodiscard]] bool canQuitApplication(const std::string& name, std::int32_t pid, bool regular,
                                          std::int32_t ownPID) const;

    /// Whether item's name or executable is protected, by the engine's rules or because the user protected that very
    /// name; for a process without a window, also because the user protected its program by the name it is shown
    /// under.
    [[nodiscard]] bool isProtected(const RunningItem& item) const;

    void toggleProtection(const RunningItem& item);
    void removeProtection(const std::string& name);

    /// Protects the application the user worked in before turning to this program.
    void protectCurrentApp();

    /// Clears cached memory with administrator rights.
    void purgeMemoryWithReview();

    /// False on a desktop that hides which application is in front: protectCurrentApp() then finds nothing.
    [[nodiscard]] bool tellsFrontmost();

    // Activity.

    /// Puts entry at the front of the log and saves the log on the action queue.
    void record(const ActivityEntry& entry);

    /// Shows where a moved item lies in the Trash, or says that it is gone.
    void showInTrash(const ActivityEntry& entry);

    /// Asks, then moves what entry recorded from the Trash back to where it came from, on the action queue. Says in
    /// message why when it cannot, and records what it did.
    void putBack(const ActivityEntry& entry);

    /// Shows path in the file manager.
    void reveal(const std::string& path);

    /// The account's home folder, for showing paths below it as "~".
    [[nodiscard]] const std::string& home() const;

    /// Now, as the store's clock has it: for day titles.
    [[nodiscard]] WallTime now() const;

    /// True while a question of the store waits for its answer; no scan, cleanup or review starts meanwhile.
    [[nodiscard]] bool isConfirming() const { return m_confirming; }

private:
    struct Cleanup;

    [[nodiscard]] bool isBusy() const;  ///< a scan, a cleanup or a confirmation is under way
    std::size_t ask(const Alert& alert);
    void noteSaved(bool saved);  ///< tells the user when a setting holds for this session only
    void refreshNetworkRates(Seconds now);

    /// Opens address, or says failure in message, with what to do about it.
    void openPage(const std::string& address, const std::string& failure);

    [[nodiscard]] bool lastScanWasStopped() const;
    void publishScan(std::vector<CleanTarget> found, std::vector<std::string> notes);
    void cleanChosen(bool saved);

    [[nodiscard]] bool refuseForRunningTools(const std::vector<CleanTarget>& chosen);
    void startCleanup(const std::shared_ptr<Cleanup>& cleanup);
    void cleanNext(const std::shared_ptr<Cleanup>& cleanup);
    /// Files the current item's outcome with the moved or the failed ones; the entry that tells of it.
    [[nodiscard]] ActivityEntry takeOutcome(Cleanup& cleanup) const;
    void finishCleanup(const Cleanup& cleanup);

    /// The catalog's title of path, or else its last component.
    [[nodiscard]] std::string nameOfPlace(const std::string& path) const;

    // Applications and processes.

    void publishProcesses(std::vector<RunningItem> rows);
    void refreshProcessesSoon();  ///< one second from now, when what was asked to quit may be gone
    void quitApplication(const RunningItem& item, bool force);
    void stopProcess(const RunningItem& item);
    /// The names of the program behind a row that is no application.
    [[nodiscard]] std::vector<std::string> programNamesOf(const RunningItem& item) const;
    /// Whether the user or the engine protects item by now; its program has these names. Any thread.
    [[nodiscard]] bool isKept(const RunningItem& item, const std::vector<std::string>& programNames) const;
    [[nodiscard]] bool mayQuit(const RunningApplication& application) const;
    [[nodiscard]] std::vector<RunningApplication> quittableApplications();
    void setProtectedApps(std::set<std::string> names);

    /// Runs work on the action queue, then, on the main thread, records its entry and calls onRecorded with it. The
    /// entry reaches the log even when the store is let go in between.
    void enqueueRecorded(std::function<ActivityEntry()> work, std::function<void(const ActivityEntry&)> onRecorded);

    /// Logs what ended while the store was being let go.
    void saveUnrecorded();

    /// Wraps job so that it runs on the main thread and only while the store lives.
    void onMain(Action job);

    // Disk explorer.

    void finishExploring(const std::string& root, DiskExplorerResult result);
    void showVisit(const ExplorerHistory::Visit& visit);

    WorkspaceStoreParts m_parts;
    ExplorerHistory m_explorerHistory;
    std::shared_ptr<OperationCancellation> m_cancellation;
    std::shared_ptr<OperationCancellation> m_explorerCancellation;
    std::shared_ptr<bool> m_alive;
    std::optional<std::pair<NetworkCounters, Seconds>> m_previousNetwork;
    std::unique_ptr<Timer> m_monitorTimer;
    std::unique_ptr<Timer> m_refreshTimer;  ///< of refreshProcessesSoon
    bool m_confirming = false;
    bool m_puttingBack = false;
    bool m_processRefreshInFlight = false;
    std::optional<bool> m_waitingReview;  ///< the argument of cleanChosen() that a question holds up
    std::shared_ptr<Cleanup> m_cleanup;   ///< while isCleaning

    /// What an action on the queue came to; empty until then.
    using Outcome = std::shared_ptr<std::optional<ActivityEntry>>;
    std::vector<Outcome> m_outcomes;  ///< in the order of the actions, until they are recorded

    // Last, so that they are joined first: jobs use everything above.
    std::unique_ptr<SerialQueue> m_explorerQueue;
    std::unique_ptr<SerialQueue> m_queue;
};

}  // namespace kestrune
