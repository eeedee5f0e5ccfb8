#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QStringList>
#include <QThread>

#include <optional>
#include <utility>

namespace kestrune {

/// The scripting side of a KWin, answering from a thread of its own, since whoever closes a window waits for it. It
/// reads the scripts it is given when it is told to run them, as the real one does, but only notes them.
class FakeKWin final : public QDBusVirtualObject {
public:
    /// runFolder is where a loaded script appears: "/Scripting/Script" since Plasma 6, "/" before.
    FakeKWin(QDBusConnection connection, QString runFolder)
        : m_connection(std::move(connection)), m_runFolder(std::move(runFolder)) {
        m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        moveToThread(&m_thread);
        m_thread.start();
        m_connection.registerService(QStringLiteral("org.kde.KWin"));
    }

    ~FakeKWin() override {
        m_connection.unregisterService(QStringLiteral("org.kde.KWin"));
        m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
        m_thread.quit();
        m_thread.wait();
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QMutexLocker lock(&m_mutex);
        if (message.member() == QLatin1String("unloadScript")) {
            m_unloaded.append(message.arguments().first().toString());
            return connection.send(message.createReply(true));
        }
        if (message.member() == QLatin1String("loadScript")) {
            m_file = message.arguments().first().toString();
            return m_answersLoad ? connection.send(message.createReply(m_number)) : true;
        }
        if (message.member() != QLatin1String("run") || message.path() != m_runFolder + QString::number(m_number)) {
            return connection.send(message.createErrorReply(QDBusError::UnknownObject, message.path()));
        }
        QFile file(m_file);
        m_scripts.append(file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString());
        return connection.send(message.createReply());
    }

    /// The texts of the scripts that were run, in order.
    [[nodiscard]] QStringList scripts() {
        const QMutexLocker lock(&m_mutex);
        return m_scripts;
    }

    [[nodiscard]] QStringList unloaded() {
        const QMutexLocker lock(&m_mutex);
        return m_unloaded;
    }

    /// What loadScript answers; nothing: it never does.
    void setNumber(std::optional<int> number) {
        const QMutexLocker lock(&m_mutex);
        m_answersLoad = number.has_value();
        m_number = number.value_or(m_number);
    }

    /// Calls as the listing script would, on this or another connection.
    void report(const QString& text, std::optional<QDBusConnection> from = std::nullopt) {
        const QString script = scripts().value(0);
        const QString target = script.mid(script.lastIndexOf(QLatin1String(")([")) + 2).section(QLatin1Char(')'), 0, 0);
        const QJsonArray names = QJsonDocument::fromJson(target.toUtf8()).array();
        QDBusMessage message = QDBusMessage::createMethodCall(names.at(0).toString(), names.at(1).toString(),
                                                              names.at(2).toString(), QStringLiteral("Report"));
        from.value_or(m_connection).send(message << text);
    }

private:
    QDBusConnection m_connection;
    const QString m_runFolder;
    QThread m_thread;
    QMutex m_mutex;
    QString m_file;
    QStringList m_scripts;
    QStringList m_unloaded;
    int m_number = 7;
    bool m_answersLoad = true;
};

}  // namespace kestrune
