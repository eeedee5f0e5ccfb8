#include "app/Application.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QRandomGenerator>
#include <QSessionManager>

#include <string>
#include <utility>

#include "app/MainMenu.h"
#include "base/SerialQueue.h"
#include "ui/Motion.h"
#include "ui/Theme.h"

namespace kestrune {

namespace {

// The window's frame: x, y, width, height.
const std::string frameKey = "KestruneWorkspace";

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
      m_folders([this] {
          prepareInterface();
          return windowForAlerts();
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
      m_tray(QDBusConnection::sessionBus(), {[this](MenuAction action) { m_delegate.perform(action); },
                                             [this] {
                                                 // Our own popup wears the desktop's colours like any window.
                                                 prepareInterface();
                                                 m_delegate.menuWillOpen();
                                             },
                                             [this] { showWindow(); }}),
      m_updatePresenter([this] { prepareInterface(); }),
      m_updater({.source = m_settings.updates,
                 .runningVersion = KESTRUNE_VERSION,
                 .fetcher = *m_services.updateFetcher,
                 .installer = *m_services.updateInstaller,
                 .presenter = m_updatePresenter,
                 .preferences = *m_services.preferences,
                 .mainQueue = m_mainQueue,
                 .clock = m_clock,
                 .random = [] { return QRandomGenerator::global()->generate(); }}),
      m_delegate({.store = m_store,
                  .engine = m_engine,
                  .alerts = m_alerts,
                  .mainQueue = m_mainQueue,
                  .statusItem = m_tray,
                  .updater = m_updater,
                  .dockTile = *m_services.dockTile,
                  .downloadHost = m_settings.downloadHost,
                  .activate = [this] { activate(); },
                  .showWindow = [this] { showWindow(); },
                  .showPorts = [this] { portWindow().present(); },
                  .isWindowVisible = [this] { return isOnScreen(m_window.get()); },
                  .isAnyWindowOpen = [this] { return isOpen(m_window.get()) || isOpen(m_ports.get()); },
                  .exit = [] { QCoreApplication::exit(); }}),
      m_instance(QDBusConnection::sessionBus(), [this] { m_delegate.applicationShouldHandleReopen(); }),
      m_signals([this] { m_delegate.terminateAfterCurrentItem(); }) {
    QCoreApplication::instance()->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &Application::sessionEnds, Qt::DirectConnection);
}

Application::~Application() = default;

void Application::start() {
    m_instance.acquire([this](bool isFirst) {
        if (isFirst) {
            launch();
        } else {
            QCoreApplication::exit();
        }
    });
}

void Application::launch() {
    m_delegate.applicationDidFinishLaunching();
    m_tray.start();
}

/// What every window and menu needs. It waits for the first one, because most of the time there is only the tray item.
void Application::prepareInterface() {
    if (m_interfacePrepared) {
        return;
    }
    m_interfacePrepared = true;
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/kestrune.svg")));
    Theme::start();
    m_services.appearance->start([](AppearanceSettings settings) {
        Theme::setDark(settings.dark);
        Motion::setReduced(settings.reduceMotion);
    });
}

WorkspaceWindow& Application::window() {
    if (!m_window) {
        prepareInterface();
        m_window = std::make_unique<WorkspaceWindow>(
            m_store, WindowMemory{[this] { return m_services.preferences->numbers(frameKey); },
                                  [this](const std::vector<double>& frame) {
                                      m_services.preferences->setNumbers(frameKey, frame);
                                  }});
        MainMenu::install(*m_window, [this](MenuAction action) { m_delegate.perform(action); });
        // Queued: the delegate may show the window again, which has to be hidden by then.
        connect(
            m_window.get(), &WorkspaceWindow::closed, this, [this] { m_delegate.windowWillClose(); },
            Qt::QueuedConnection);
    }
    return *m_window;
}

void Application::activate() {
    for (QWidget* const open : {static_cast<QWidget*>(m_window.get()), static_cast<QWidget*>(m_ports.get())}) {
        if (isOpen(open)) {
            open->raise();
        }
    }
}

void Application::showWindow() {
    window().present();
}

PortReviewWindow& Application::portWindow() {
    if (!m_ports) {
        prepareInterface();
        m_ports = std::make_unique<PortReviewWindow>(m_store);
        MainMenu::install(*m_ports, [this](MenuAction action) { m_delegate.perform(action); });
    }
    return *m_ports;
}

/// The one in front, so that a question stands over what it is about.
QWidget* Application::windowForAlerts() const {
    if (isOpen(m_ports.get()) && (m_ports->isActiveWindow() || !isOpen(m_window.get()))) {
        return m_ports.get();
    }
    return isOpen(m_window.get()) ? m_window.get() : nullptr;
}

bool Application::eventFilter(QObject* watched, QEvent* event) {
    // The toolkit asks to quit (a global menu, the platform): that is the quit guard's to decide.
    if (watched == QCoreApplication::instance() && event->type() == QEvent::Quit) {
        event->ignore();
        m_delegate.terminate();
        return true;
    }
    if (m_ports && watched == m_ports.get() && event->type() == QEvent::Hide && !event->spontaneous()) {
        // Queued, because the window is not quite hidden yet.
        QMetaObject::invokeMethod(
            this, [this] { m_delegate.windowWillClose(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void Application::sessionEnds(QSessionManager& manager) {
    if (!manager.allowsInteraction()) {
        m_delegate.terminateAfterCurrentItem();
        return;
    }
    const bool mayEnd = m_delegate.applicationShouldTerminate();
    manager.release();
    if (!mayEnd) {
        manager.cancel();
    }
}

}  // namespace kestrune
