#pragma once

#include <QObject>

#include <array>
#include <memory>

#include "app/AppDelegate.h"
#include "app/BuildSettings.h"
#include "app/MainMenuBar.h"
#include "app/QtMainQueue.h"
#include "app/StatusItemWithPopup.h"
#include "base/Clock.h"
#include "engine/SystemEngine.h"
#include "platform/PlatformServices.h"
#include "storage/DevCleaners.h"
#include "ui/PortReviewWindow.h"
#include "ui/QtAlertPresenter.h"
#include "ui/QtFolderChooser.h"
#include "ui/QtUpdatePresenter.h"
#include "ui/WorkspaceWindow.h"
#include "workspace/WorkspaceStore.h"

class QSessionManager;

namespace kestrune {

/// The running program: everything there is one of, built and taken down in order. Build it after QApplication; all
/// of it belongs to the main thread.
class Application final : public QObject {
    Q_OBJECT

public:
    explicit Application(BuildSettings settings);
    ~Application() override;

    /// Launches, or ends the event loop at once when the program runs already.
    void start();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] std::unique_ptr<Updater> makeUpdater();
    void launch();
    void refuseToLaunch();
    void prepareInterface();
    void giveCommands(QWidget& window);
    void applyMotion() const;
    void activate();
    void showWindow();
    [[nodiscard]] WorkspaceWindow& window();
    [[nodiscard]] PortReviewWindow& portWindow();
    [[nodiscard]] std::array<QWidget*, 3> windows() const;
    [[nodiscard]] bool isAnyWindowOpen() const;
    [[nodiscard]] QWidget* windowForAlerts() const;
    void sessionEnds(QSessionManager& manager);

    // In the order of their construction: each uses only what stands above it.
    const BuildSettings m_settings;
    QtMainQueue m_mainQueue;
    SystemClock m_clock;
    PlatformServices m_services;
    SystemEngine m_engine;
    DevCleaners m_cleaners;
    QtAlertPresenter m_alerts;
    QtFolderChooser m_folders;
    WorkspaceStore m_store;
    StatusItemWithPopup m_statusItem;
    QtUpdatePresenter m_updatePresenter;
    std::unique_ptr<Updater> m_updater;
    AppDelegate m_delegate;
    bool m_interfacePrepared = false;
    bool m_desktopReducesMotion = false;
    bool m_sessionHasEnded = false;  ///< what asks to quit from now on asks for the last time
    Subscription m_motionChanged;
    std::unique_ptr<Timer> m_farewell;
    std::unique_ptr<MainMenuBar> m_menuBar;     ///< on desktops that have one for the program in front
    std::unique_ptr<WorkspaceWindow> m_window;  ///< made when it is first shown, then kept
    std::unique_ptr<PortReviewWindow> m_ports;  ///< likewise
};

}  // namespace kestrune
