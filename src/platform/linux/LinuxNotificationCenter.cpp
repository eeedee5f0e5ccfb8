#include "platform/linux/LinuxNotificationCenter.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace kestrune {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");

// A notification service that has to be started first may take its time; nobody waits for it.
constexpr int answerTimeoutMilliseconds = 10'000;

constexpr int serverDecidesTimeout = -1;

QDBusMessage call(const QString& member) {
    return QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service, member);
}

}  // namespace

LinuxNotificationCenter::LinuxNotificationCenter(bool hasIdentity)
    : m_hasIdentity(hasIdentity), m_context(std::make_unique<QObject>()) {
}

LinuxNotificationCenter::~LinuxNotificationCenter() = default;

void LinuxNotificationCenter::queryAuthorization(std::function<void(NotificationAuthorization)> answer) {
    const QDBusPendingCall pending =
        QDBusConnection::sessionBus().asyncCall(call(QStringLiteral("GetCapabilities")), answerTimeoutMilliseconds);
    auto* watcher = new QDBusPendingCallWatcher(pending, m_context.get());
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, m_context.get(), [this, watcher, answer = std::move(answer)] {
            watcher->deleteLater();
            const QDBusPendingReply<QStringList> reply = *watcher;
            if (reply.isValid()) {
                m_bodyMarkup = reply.value().contains(QLatin1String("body-markup"));
            }
            answer(reply.isValid() ? NotificationAuthorization::authorized : NotificationAuthorization::denied);
        });
}

void LinuxNotificationCenter::requestAuthorization(std::function<void(bool granted)> answer) {
    queryAuthorization([answer = std::move(answer)](NotificationAuthorization authorization) {
        answer(authorization == NotificationAuthorization::authorized);
    });
}

void LinuxNotificationCenter::deliver(const std::string& title, const std::string& body) {
    if (m_bodyMarkup) {
        show(title, body);
        return;
    }
    queryAuthorization([this, title, body](NotificationAuthorization) { show(title, body); });
}

void LinuxNotificationCenter::show(const std::string& title, const std::string& body) const {
    const QString text = QString::fromStdString(body);
    QDBusMessage message = call(QStringLiteral("Notify"));
    message << QStringLiteral("Kestrune") << 0U << QStringLiteral("kestrune") << QString::fromStdString(title)
            << (m_bodyMarkup.value_or(false) ? text.toHtmlEscaped() : text) << QStringList()
            << QVariantMap{{QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}}
            << serverDecidesTimeout;
    QDBusConnection::sessionBus().asyncCall(message);
}

bool LinuxNotificationCenter::playSound(const std::string& name) {
    static_cast<void>(name);
    return false;
}

void LinuxNotificationCenter::beep() {
    QApplication::beep();
}

}  // namespace kestrune
