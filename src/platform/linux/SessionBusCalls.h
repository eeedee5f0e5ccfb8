#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

#include <chrono>

namespace kestrune {

/// Calls on the session bus, made from the main thread, that all together keep their caller no longer than a limit.
class SessionBusCalls final {
public:
    using Milliseconds = std::chrono::milliseconds;

    /// The limit counts from now.
    SessionBusCalls(QDBusConnection bus, Milliseconds limit);

    /// The reply; an error when there is none in time.
    [[nodiscard]] QDBusMessage call(const QDBusMessage& message) const;

    /// The replies to calls that are all under way at once, in their order.
    [[nodiscard]] QList<QDBusMessage> callAll(const QList<QDBusMessage>& messages) const;

    /// A call of the bus itself, which never starts a service.
    [[nodiscard]] static QDBusMessage toBus(const QString& method);

private:
    [[nodiscard]] int millisecondsLeft() const;

    QDBusConnection m_bus;
    std::chrono::steady_clock::time_point m_deadline;
};

}  // namespace kestrune
