#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <functional>

namespace kestrune {

/// Keeps our item registered with org.kde.StatusNotifierWatcher, whenever that appears or restarts, and knows whether
/// a panel shows it. Nothing here waits for an answer. Main thread.
class TrayRegistration final : public QObject {
    Q_OBJECT

public:
    /// unavailable is called when no panel has shown the item for a while, each time that happens.
    TrayRegistration(QDBusConnection connection, std::function<void()> unavailable);

    /// Registers, now or when a watcher appears.
    void start();

    /// Whether a panel shows the item.
    [[nodiscard]] bool isHosted() const { return m_registered && m_hostPresent; }

private Q_SLOTS:
    void hostChanged();
    void busLost();

private:
    void watcherAppeared();
    void watcherVanished();
    void askForHost();
    void update();

    QDBusConnection m_connection;
    QDBusServiceWatcher m_watcher;
    QTimer m_grace;
    bool m_registered = false;
    bool m_hostPresent = false;
    bool m_wasHosted = false;
};

}  // namespace kestrune
