#include "platform/linux/TrayRegistration.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace kestrune {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

QDBusMessage call(const QString& interface, const QString& member) {
    return QDBusMessage::createMethodCall(watcherService, watcherPath, interface, member);
}

}  // namespace

TrayRegistration::TrayRegistration(QDBusConnection connection, std::function<void()> unavailable, Grace grace)
    : m_connection(std::move(connection)), m_grace(grace) {
    m_graceTimer.setSingleShot(true);
    connect(&m_graceTimer, &QTimer::timeout, this, std::move(unavailable));
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayRegistration::watcherAppeared);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &TrayRegistration::watcherVanished);
}

void TrayRegistration::start() {
    m_graceTimer.start(m_grace.atStart);
    if (!m_connection.isConnected()) {
        return;
    }
    m_watcher.setConnection(m_connection);
    m_watcher.addWatchedService(watcherService);
    // Signals are taken from any sender: naming one would make Qt ask the bus for its owner and wait for the answer.
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        m_connection.connect(QString(), watcherPath, watcherService, QLatin1String(signal), this, SLOT(hostChanged()));
    }
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SLOT(busLost()));
    watcherAppeared();
}

void TrayRegistration::watcherAppeared() {
    QDBusMessage message = call(watcherService, QStringLiteral("RegisterStatusNotifierItem"));
    message << m_connection.baseService();
    // A panel that is not running is not ours to start.
    message.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        m_registered = !pending->isError();
        update();
    });
    askForHost();
}

void TrayRegistration::watcherVanished() {
    m_registered = false;
    m_hostPresent = false;
    update();
}

void TrayRegistration::hostChanged() {
    askForHost();
}

void TrayRegistration::busLost() {
    watcherVanished();
}

void TrayRegistration::askForHost() {
    QDBusMessage message = call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    message.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        m_hostPresent = reply.isValid() && reply.value().variant().toBool();
        update();
    });
}

void TrayRegistration::update() {
    if (isHosted()) {
        m_graceTimer.stop();
        m_wasHosted = true;
    } else if (m_wasHosted) {
        m_wasHosted = false;
        m_graceTimer.start(m_grace.whenLost);
    }
}

}  // namespace kestrune
