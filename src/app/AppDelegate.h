#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/StatusMenuModel.h"
#include "base/Published.h"
#include "engine/SystemEngine.h"
#include "platform/AlertPresenter.h"
#include "platform/DockTile.h"
#include "platform/MainQueue.h"
#include "platform/StatusItem.h"
#include "platform/Updater.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

/// What AppDelegate works with. Everything outlives it.
struct AppDelegateParts {
    WorkspaceStore& store;
    SystemEngine& engine;
    AlertPresenter& alerts;
    MainQueue& mainQueue;
    StatusItem& statusItem;
    Updater& updater;
    DockTile& dockTile;
    std::string downloadHost;               ///< named where an update fails
    std::function<void()> activate;         ///< brings the program's open windows to the front
    std::function<void()> showWindow;       ///< shows the workspace window on the store's page, in front
    std::function<void()> showPorts;        ///< shows the port review window, in front
    std::function<bool()> isWindowVisible;  ///< the workspace window is on the screen
    std::function<bool()> isAnyWindowOpen;  ///< any window of the program is open, be it minimised
    std::function<void()> exit;             ///< ends the program's event loop
};

/// The application shell: keeps the status item current, carries out menu commands and decides about quitting.
/// Main thread.
class AppDelegate final : public UpdaterDelegate {
public:
    explicit AppDelegate(AppDelegateParts parts);
    ~AppDelegate() override = default;

    /// Turns starting at login on at the first launch, starts the updater and monitoring, shows the first figures and
    /// goes on every five seconds. Once.
    void applicationDidFinishLaunching();

    /// Reads memory and disk once, brings the status item up to date and hands the figures to the store. Lists
    /// processes as well while the workspace window shows them.
    void refresh();

    /// The menu is about to open: the same as refresh.
    void menuWillOpen();

    /// Carries out a menu command.
    void perform(MenuAction action);

    /// The quit guard. False, after an alert, while a cleanup or a memory purge runs.
    [[nodiscard]] bool applicationShouldTerminate();

    /// The user asks to quit: ends the program unless the quit guard objects. True when it ends.
    bool terminate();

    /// The system asks to quit and will not ask again: ends the program at once, or as soon as a running cleanup has
    /// finished its current item.
    void terminateAfterCurrentItem();

    /// The user's session asks whether it may end. mayAsk: a question may be shown. False when it should not end now;
    /// where nothing can be asked, the program ends as soon as a running cleanup has finished its current item.
    [[nodiscard]] bool sessionWillEnd(bool mayAsk);

    /// The program was started again while it runs, or has lost its status item: shows the workspace window.
    void applicationShouldHandleReopen();

    /// The workspace window was closed: the entry in the dock goes, unless an update waits there.
    void windowWillClose();

    /// Any window was closed. Without a status item and another window nothing of the program is left to see, so
    /// closing the last one then means to quit.
    void endWithoutWindows();

    /// The user asks for newer versions. In a build that does not look for any, the settings page says so.
    void checkUpdates();

    void didFindValidUpdate(const UpdateItem& item) override;
    void willHandleShowingUpdate(const UpdateItem& item, bool userInitiated) override;
    void userDidMake(UpdateChoice choice, const UpdateItem& item) override;
    void didNotFindUpdate() override;
    void didAbortWithError(const UpdaterError& error) override;
    [[nodiscard]] bool shouldInstallUpdate() override;

    [[nodiscard]] const StatusMenuModel& menu() const { return m_menu; }

private:
    void showWindow();
    void open(WorkspacePage page);
    void startUpdater();
    void setUpdateAvailable(const UpdateItem& item);
    void clearUpdate();
    [[nodiscard]] std::string noUpdatesText() const;
    void cleanSaved();
    void protectCurrent();
    void exitWhenIdle();
    [[nodiscard]] bool isActing() const;

    AppDelegateParts m_parts;
    StatusMenuModel m_menu;
    std::unique_ptr<Timer> m_timer;
    std::unique_ptr<Timer> m_recheck;  ///< brings an update forward that a scheduled check found
    std::shared_ptr<AppDelegate*> m_self = std::make_shared<AppDelegate*>(this);  ///< for what may outlive it
    bool m_guardIsShown = false;
    std::vector<Subscription> m_exitSubscriptions;
};

}  // namespace kestrune
