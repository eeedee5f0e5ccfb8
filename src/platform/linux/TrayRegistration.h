#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace kestrune {

/// Keeps our item registered with org.kde.StatusNotifierWatcher, whenever that appears or restarts, and knows whether
/// a panel shows it. Nothing here waits for an answer. Main thread.
class TrayRegistration final : public QObject {
    Q_OBJECT

public:
    /// How long the program waits for a panel before it does without: at login the panel may be as late as the program
    /// is, later it may restart.
    struct Grace {
        std::chrono::milliseconds atStart{1000};
        std::chrono::milliseconds whenLost{3000};
    };

    /// unavailable is called when no panel has shown the item for that long, each time that happens.
    TrayRegistration(QDBusConnection connection, std::function<void()> unavailable, Grace grace = defaultGrace());

    /// Registers, now or when a watcher appears.
    void start();

    /// Whether a panel shows the item.
    [[nodiscard]] bool isHosted() const { return m_registered && m_hostPresent; }

private:
    Q_SLOT void hostChanged();
    Q_SLOT void busLost();

    [[nodiscard]] static Grace defaultGrace() { return {}; }

    void watcherAppeared();
    void watcherVanished();
    void askForHost();
    void update();

    QDBusConnection m_connection;
    QDBusServiceWatcher m_watcher;
    const Grace m_grace;
    QTimer m_graceTimer;
    bool m_registered = false;
    bool m_hostPresent = false;
    bool m_wasHosted = false;
};

}  // namespace kestrune
