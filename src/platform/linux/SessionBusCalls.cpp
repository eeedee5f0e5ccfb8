#include "platform/linux/SessionBusCalls.h"

#include <QDBusPendingCall>

#include <algorithm>
#include <utility>

namespace kestrune {

SessionBusCalls::SessionBusCalls(QDBusConnection bus, Milliseconds limit)
    : m_bus(std::move(bus)), m_deadline(std::chrono::steady_clock::now() + limit) {
}

QDBusMessage SessionBusCalls::call(const QDBusMessage& message) const {
    return m_bus.call(message, QDBus::Block, millisecondsLeft());
}

QList<QDBusMessage> SessionBusCalls::callAll(const QList<QDBusMessage>& messages) const {
    QList<QDBusPendingCall> pending;
    for (const QDBusMessage& message : messages) {
        pending.append(m_bus.asyncCall(message, millisecondsLeft()));
    }
    QList<QDBusMessage> replies;
    for (QDBusPendingCall& call : pending) {
        call.waitForFinished();
        replies.append(call.reply());
    }
    return replies;
}

QDBusMessage SessionBusCalls::toBus(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

int SessionBusCalls::millisecondsLeft() const {
    // A limit of 0 would mean "however long it takes".
    const auto left = std::chrono::ceil<Milliseconds>(m_deadline - std::chrono::steady_clock::now());
    return static_cast<int>(std::max(left, Milliseconds(1)).count());
}

}  // namespace kestrune
