#include "app/Application.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QRandomGenerator>
#include <QSessionManager>

#include <algorithm>
#include <string>
#include <utility>

#include "app/MainMenu.h"
#include "base/Localized.h"
#include "base/SerialQueue.h"
#include "ui/Motion.h"
#include "ui/Theme.h"
#include "ui/UpdateWindow.h"
#include "update/StandardUpdater.h"

namespace kestrune {

namespace {

// The window's frame: x, y, width, height.
const std::string frameKey = "KestruneWorkspace";

// For the desktop to take the notification over; nobody waits for this start any more.
constexpr std::chrono::milliseconds farewellTime{500};

bool isOpen(const QWidget* window) {
    return window != nullptr && window->isVisible();
}

bool isOnScreen(const QWidget* window) {
    return isOpen(window) && !window->isMinimized();
}

}  // namespace

Application::Application(BuildSettings settings)
    : m_settings(std::move(settings)),
      m_services(makePlatformServices()),
      m_engine({*m_services.hostStatistics, *m_services.powerSources, *m_services.volumeInfo, *m_services.processRunner,
                *m_services.systemTools, *m_services.preferences, *m_services.notificationCenter, m_clock, m_mainQueue,
                *m_services.runningApplications, *m_services.trash, *m_services.loginItem, m_services.homeDirectory,
                m_services.processIdentifier}),
      m_cleaners(m_services.homeDirectory, {*m_services.fileQueries, *m_services.directoryWalker, *m_services.trash,
                                            *m_services.processRunner, *m_services.systemTools}),
      m_alerts([this] {
          prepareInterface();
          return windowForAlerts();
      }),
      m_folders(
          [this] {
              prepareInterface();
              return windowForAlerts();
          },
          [this](const std::string& message) {
              if (m_services.panelMessage) {
                  m_services.panelMessage->show(message);
              }
          }),
      m_store({m_engine,
               m_cleaners,
               *m_services.preferences,
               *m_services.fileStore,
               *m_services.fileQueries,
               *m_services.fileViewer,
               *m_services.directoryWalker,
               m_folders,
               *m_services.runningApplications,
               *m_services.runningPrograms,
               *m_services.processListing,
               *m_services.processControl,
               *m_services.systemTools,
               *m_services.memoryPressure,
               m_alerts,
               *m_services.trash,
               *m_services.linkOpener,
               m_mainQueue,
               m_clock,
               [](const std::string& label) { return std::make_unique<ThreadSerialQueue>(label); },
               m_settings.helpPages}),
      m_statusItem(*m_services.statusItem),
      m_updatePresenter([this] { prepareInterface(); }),
      m_updater(makeUpdater()),
      m_delegate({.store = m_store,
                  .engine = m_engine,
                  .alerts = m_alerts,
                  .mainQueue = m_mainQueue,
                  .statusItem = m_statusItem,
                  .updater = *m_updater,
                  .dockTile = *m_services.dockTile,
                  .downloadHost = m_settings.downloadHost,
                  .activate = [this] { activate(); },
                  .showWindow = [this] { showWindow(); },
                  .showPorts = [this] { portWindow().present(); },
                  .isWindowVisible = [this] { return isOnScreen(m_window.get()); },
                  .isAnyWindowOpen = [this] { return isAnyWindowOpen(); },
                  .exit = [] { QCoreApplication::exit(); }}) {
    m_services.terminationRequests->start([this] { m_delegate.terminateAfterCurrentItem(); });
    QCoreApplication::instance()->installEventFilter(this);
    // Elsewhere the toolkit emits this before every request to quit, and always says that nobody may be asked.
    if (!m_services.sessionAsksToQuit) {
        connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &Application::sessionEnds, Qt::DirectConnection);
    }
}

Application::~Application() {
    // The windows go one by one, and each would ask for the others.
    QCoreApplication::instance()->removeEventFilter(this);
}

void Application::start() {
    const auto reopen = [this] { m_delegate.applicationShouldHandleReopen(); };
    m_services.singleInstance->acquire(reopen, [this](SingleInstance::Outcome outcome) {
        switch (outcome) {
            case SingleInstance::Outcome::first:
                return launch();
            case SingleInstance::Outcome::otherCameForward:
                return QCoreApplication::exit();
            case SingleInstance::Outcome::otherDoesNotAnswer:
                return refuseToLaunch();
        }
    });
}

/// The system's own where there is one.
std::unique_ptr<Updater> Application::makeUpdater() {
    if (m_services.updater) {
        return std::move(m_services.updater);
    }
    return std::make_unique<StandardUpdater>(
        StandardUpdaterParts{.source = m_settings.updates,
                             .runningVersion = KESTRUNE_VERSION,
                             .fetcher = *m_services.updateFetcher,
                             .installer = *m_services.updateInstaller,
                             .presenter = m_updatePresenter,
                             .preferences = *m_services.preferences,
                             .mainQueue = m_mainQueue,
                             .clock = m_clock,
                             .random = [] { return QRandomGenerator::global()->generate(); }});
}

/// The program runs already, and hangs: a second one would work on the same files.
void Application::refuseToLaunch() {
    m_engine.notify("Kestrune", localized("Kestrune is already running but doesn’t answer. Wait a moment, or end it in "
                                          "your system monitor and start it again."));
    m_farewell = m_mainQueue.after(farewellTime, [] { QCoreApplication::exit(); });
}

void Application::launch() {
    if (m_services.hasGlobalMenuBar) {
        m_menuBar = std::make_unique<MainMenuBar>([this](MenuAction action) { m_delegate.perform(action); });
    }
    m_statusItem.start({.perform = [this](MenuAction action) { m_delegate.perform(action); },
                        .menuWillOpen =
                            [this] {
                                // Our own popup wears the desktop's colours like any window.
                                prepareInterface();
                                m_delegate.menuWillOpen();
                            },
                        .toggleMenu = {},
                        .unavailable = [this] { m_delegate.applicationShouldHandleReopen(); }});
    m_delegate.applicationDidFinishLaunching();
}

/// What every window and menu needs. It waits for the first one, because most of the time there is only the tray item.
void Application::prepareInterface() {
    if (m_interfacePrepared) {
        return;
    }
    m_interfacePrepared = true;
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/kestrune.svg")));
    Theme::start();
    m_services.appearance->start([this](AppearanceSettings settings) {
        Theme::setDark(settings.dark);
        m_desktopReducesMotion = settings.reduceMotion;
        applyMotion();
    });
    m_motionChanged = m_store.reducedMotion.observe([this] { applyMotion(); });
    applyMotion();
}

void Application::applyMotion() const {
    Motion::setReduced(m_desktopReducesMotion || m_store.reducedMotion.get());
}

/// The key equivalents of the main menu, where they do not come with a menu bar.
void Application::giveCommands(QWidget& window) {
    if (!m_menuBar) {
        MainMenu::install(window, [this](MenuAction action) { m_delegate.perform(action); });
    }
}

WorkspaceWindow& Application::window() {
    if (!m_window) {
        prepareInterface();
        m_window = std::make_unique<WorkspaceWindow>(
            m_store, WindowMemory{[this] { return m_services.preferences->numbers(frameKey); },
                                  [this](const std::vector<double>& frame) {
                                      m_services.preferences->setNumbers(frameKey, frame);
                                  }});
        giveCommands(*m_window);
        // Queued: the delegate may show the window again, which has to be hidden by then.
        connect(
            m_window.get(), &WorkspaceWindow::closed, this, [this] { m_delegate.windowWillClose(); },
            Qt::QueuedConnection);
    }
    return *m_window;
}

void Application::activate() {
    m_services.dockTile->activate();
    QWidget* last = nullptr;
    for (QWidget* const window : windows()) {
        if (isOnScreen(window)) {
            window->raise();
            last = window;
        }
    }
    if (last != nullptr) {
        last->activateWindow();
    }
}

/// From the one that lies lowest when all of them come to the front.
std::array<QWidget*, 3> Application::windows() const {
    return {m_window.get(), m_ports.get(), m_updatePresenter.window()};
}

bool Application::isAnyWindowOpen() const {
    const auto all = windows();
    return std::any_of(all.begin(), all.end(), isOpen);
}

void Application::showWindow() {
    window().present();
}

PortReviewWindow& Application::portWindow() {
    if (!m_ports) {
        prepareInterface();
        m_ports = std::make_unique<PortReviewWindow>(m_store);
        giveCommands(*m_ports);
    }
    return *m_ports;
}

/// The one in front, so that a question stands over what it is about.
QWidget* Application::windowForAlerts() const {
    QWidget* lowest = nullptr;
    for (QWidget* const window : windows()) {
        if (isOpen(window) && window->isActiveWindow()) {
            return window;
        }
        lowest = lowest == nullptr && isOpen(window) ? window : lowest;
    }
    return lowest;
}

bool Application::eventFilter(QObject* watched, QEvent* event) {
    // The toolkit asks to quit (a global menu, the platform): that is the quit guard's to decide.
    if (watched == QCoreApplication::instance() && event->type() == QEvent::Quit) {
        event->ignore();
        if (m_sessionHasEnded) {
            m_delegate.terminateAfterCurrentItem();
        } else {
            m_delegate.terminate();
        }
        return true;
    }
    if (event->type() == QEvent::Hide && !event->spontaneous() &&
        (watched == m_ports.get() || qobject_cast<UpdateWindow*>(watched) != nullptr)) {
        // Queued, because the window is not quite hidden yet.
        QMetaObject::invokeMethod(
            this, [this] { m_delegate.endWithoutWindows(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void Application::sessionEnds(QSessionManager& manager) {
    const bool mayAsk = manager.allowsInteraction();
    const bool mayEnd = m_delegate.sessionWillEnd(mayAsk);
    if (mayAsk) {
        manager.release();
    }
    if (!mayEnd) {
        manager.cancel();
    }
    m_sessionHasEnded = !mayAsk;
}

}  // namespace kestrune
