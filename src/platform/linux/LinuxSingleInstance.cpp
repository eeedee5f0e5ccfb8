#include "platform/linux/LinuxSingleInstance.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>
#include <QVariantMap>

#include <utility>

namespace kestrune {

namespace {

const QString instanceName = QStringLiteral("com.torvandelsyn.kestrune");
const QString instancePath = QStringLiteral("/com/torvandelsyn/kestrune");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

constexpr int answerTimeoutMilliseconds = 1000;

// How long one that ends is waited for: its object goes first, its name only with the process.
constexpr int pauseMilliseconds = 50;
constexpr int pausesAtMost = 15;

// org.freedesktop.DBus.RequestName
constexpr uint doNotQueue = 4;
constexpr uint nameExists = 3;

}  // namespace

LinuxSingleInstance::LinuxSingleInstance(QDBusConnection connection) : m_connection(std::move(connection)) {
}

LinuxSingleInstance::~LinuxSingleInstance() {
    m_connection.unregisterObject(instancePath);
}

void LinuxSingleInstance::acquire(std::function<void()> reopen, std::function<void(Outcome)> answer) {
    m_reopen = std::move(reopen);
    m_connection.registerVirtualObject(instancePath, this);
    acquire(std::move(answer));
}

void LinuxSingleInstance::acquire(std::function<void(Outcome)> answer) {
    // Without a bus a call is never answered, not even with an error.
    if (!m_connection.isConnected()) {
        answer(Outcome::first);
        return;
    }
    requestName([this, answer = std::move(answer)](bool isTaken) {
        if (isTaken) {
            activateOther(answer);
        } else {
            answer(Outcome::first);
        }
    });
}

void LinuxSingleInstance::requestName(std::function<void(bool isTaken)> answer) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    message << instanceName << doNotQueue;
    auto* watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(message, answerTimeoutMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answer = std::move(answer)] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        answer(reply.isValid() && reply.value() == nameExists);
    });
}

void LinuxSingleInstance::activateOther(const std::function<void(Outcome)>& answer) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(instanceName, instancePath, applicationInterface, QStringLiteral("Activate"));
    message << QVariantMap();
    message.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(message, answerTimeoutMilliseconds), this);
    // An instance that is too busy to answer still holds the name: a second one would work on the same files. One that
    // ended before it was asked, or before it answered, leaves its place to us.
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answer] {
        watcher->deleteLater();
        if (!watcher->isError()) {
            answer(Outcome::otherCameForward);
        } else if (watcher->error().type() == QDBusError::ServiceUnknown) {
            acquire(answer);
        } else if (watcher->error().type() == QDBusError::UnknownObject && m_pauses < pausesAtMost) {
            ++m_pauses;
            QTimer::singleShot(pauseMilliseconds, this, [this, answer] { acquire(answer); });
        } else {
            requestName([answer](bool isTaken) { answer(isTaken ? Outcome::otherDoesNotAnswer : Outcome::first); });
        }
    });
}

QString LinuxSingleInstance::introspect(const QString& objectPath) const {
    Q_UNUSED(objectPath);
    return QStringLiteral(R"xml(<interface name="org.freedesktop.Application">
<method name="Activate"><arg name="platform-data" type="a{sv}" direction="in"/></method>
</interface>
)xml");
}

bool LinuxSingleInstance::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() != applicationInterface || message.member() != QLatin1String("Activate")) {
        return false;
    }
    // Answered when its turn comes: a program that is ending never gets there, and whoever asks takes its place then.
    QMetaObject::invokeMethod(
        this,
        [this, connection, reply = message.createReply()] {
            connection.send(reply);
            m_reopen();
        },
        Qt::QueuedConnection);
    return true;
}

}  // namespace kestrune
