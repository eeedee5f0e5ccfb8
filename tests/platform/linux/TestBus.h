#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVirtualObject>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace kestrune {

/// A message bus of the test's own, which is also the process's session bus.
class TestBus final {
public:
    /// Started at its first use; use it before anything asks for the session bus.
    static TestBus& instance() {
        static TestBus bus;
        return bus;
    }

    /// A new connection to the bus.
    [[nodiscard]] QDBusConnection connect() {
        return QDBusConnection::connectToBus(m_address, QStringLiteral("test-%1").arg(++m_connections));
    }

    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    ~TestBus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

private:
    TestBus() {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                        QStringLiteral("--address=unix:tmpdir=/tmp")});
        if (!m_daemon.waitForReadyRead()) {
            throw std::runtime_error("dbus-daemon did not start");
        }
        m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
    }

    QProcess m_daemon;
    QString m_address;
    int m_connections = 0;
};

/// An object on the bus that notes what it is asked and answers what the test says.
class FakeBusObject final : public QDBusVirtualObject {
public:
    using Answer = std::function<std::optional<QVariantList>(const QDBusMessage&)>;

    FakeBusObject(QDBusConnection connection, const QString& path) : m_connection(std::move(connection)) {
        m_connection.registerVirtualObject(path, this);
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        messages.append(message);
        const auto values = answer ? answer(message) : std::nullopt;
        return values && connection.send(message.createReply(*values));
    }

    [[nodiscard]] qsizetype count(const QString& member) const {
        return std::count_if(messages.begin(), messages.end(),
                             [&](const QDBusMessage& message) { return message.member() == member; });
    }

    Answer answer;  ///< nothing: the method is unknown
    QList<QDBusMessage> messages;

private:
    QDBusConnection m_connection;
};

/// Sends a call and runs the event loop until its answer is here.
inline QDBusMessage callAndWait(QDBusConnection connection, const QDBusMessage& message) {
    const QDBusPendingCallWatcher watcher(connection.asyncCall(message));
    if (!QTest::qWaitFor([&] { return watcher.isFinished(); })) {
        throw std::runtime_error("no answer");
    }
    return watcher.reply();
}

}  // namespace kestrune
