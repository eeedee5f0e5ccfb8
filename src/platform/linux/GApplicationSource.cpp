#include "platform/linux/GApplicationSource.h"

#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusSignature>
#include <QStringList>
#include <QVariant>

#include <chrono>

#include "base/Text.h"
#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/LinuxStatusFile.h"
#include "platform/linux/SessionBusCalls.h"
#include "platform/linux/SystemdUnit.h"

namespace kestrune {

namespace {

// The bus and a program that is well answer within some milliseconds.
constexpr std::chrono::milliseconds longestWait{250};

const QString quitAction = QStringLiteral("quit");

// The object path that GApplication makes of its id.
QString objectPath(const QString& name) {
    return QLatin1Char('/') +
           QString(name).replace(QLatin1Char('.'), QLatin1Char('/')).replace(QLatin1Char('-'), QLatin1Char('_'));
}

QDBusMessage toActions(const QString& connection, const QString& name, const QString& method) {
    return QDBusMessage::createMethodCall(connection, objectPath(name), QStringLiteral("org.gtk.Actions"), method);
}

bool isReply(const QDBusMessage& message, const QString& signature) {
    return message.type() == QDBusMessage::ReplyMessage && message.signature() == signature;
}

// Enabled, and needs no parameter.
bool canQuit(const QDBusMessage& description) {
    if (!isReply(description, QStringLiteral("(bgav)"))) {
        return false;
    }
    const auto argument = description.arguments().first().value<QDBusArgument>();
    bool isEnabled = false;
    QDBusSignature parameter;
    argument.beginStructure();
    argument >> isEnabled >> parameter;
    return isEnabled && parameter.signature().isEmpty();
}

// No reply in time is none to wait for: the program asks its user something, or has ended already.
bool isDelivered(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ReplyMessage || QDBusError(reply).type() == QDBusError::NoReply;
}

}  // namespace

bool GApplicationSource::isAvailable() {
    return QDBusConnection::sessionBus().isConnected();
}

bool GApplicationSource::close(std::int32_t pid, const IsStillMeant& isStillMeant) {
    if (pid == ::getpid() || !isAvailable()) {
        return false;
    }
    const SessionBusCalls calls(QDBusConnection::sessionBus(), longestWait);
    for (const Owner& owner : owners(calls)) {
        if (!speaksFor(owner, pid)) {
            continue;
        }
        QDBusMessage question = toActions(owner.connection, owner.name, QStringLiteral("Describe"));
        question << quitAction;
        if (canQuit(calls.call(question))) {
            QDBusMessage request = toActions(owner.connection, owner.name, QStringLiteral("Activate"));
            request << quitAction << QVariantList() << QVariantMap();
            return isStillMeant() && isDelivered(calls.call(request));
        }
    }
    return false;
}

std::vector<GApplicationSource::Owner> GApplicationSource::owners(const SessionBusCalls& calls) {
    const QDBusMessage list = calls.call(SessionBusCalls::toBus(QStringLiteral("ListNames")));
    if (!isReply(list, QStringLiteral("as"))) {
        return {};
    }
    std::vector<Owner> owners;
    QList<QDBusMessage> questions;
    for (const QString& name : list.arguments().first().toStringList()) {
        if (!name.startsWith(QLatin1Char(':'))) {
            owners.push_back({{}, name});
            questions.append(SessionBusCalls::toBus(QStringLiteral("GetNameOwner")) << name);
        }
    }
    const QList<QDBusMessage> connections = calls.callAll(questions);
    questions.clear();
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const QDBusMessage& reply = connections.at(static_cast<qsizetype>(i));
        owners[i].connection = isReply(reply, QStringLiteral("s")) ? reply.arguments().first().toString() : QString();
        questions.append(SessionBusCalls::toBus(QStringLiteral("GetConnectionUnixProcessID")) << owners[i].connection);
    }
    const QList<QDBusMessage> processes = calls.callAll(questions);
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const QDBusMessage& reply = processes.at(static_cast<qsizetype>(i));
        owners[i].pid = isReply(reply, QStringLiteral("u")) ? reply.arguments().first().toInt() : 0;
    }
    return owners;
}

bool GApplicationSource::speaksFor(const Owner& owner, std::int32_t pid) const {
    if (owner.pid == pid) {
        return true;
    }
    // A program in a sandbox reaches the bus through a proxy outside, which lets it own the name of its id.
    const LinuxFileDescriptor folder = LinuxProcessIdentity::openFolder(owner.pid, m_procRoot);
    const std::string executable = LinuxProcessIdentity::executableOf(folder.get()).value_or(std::string());
    if (lastPathComponent(executable) != "xdg-dbus-proxy") {
        return false;
    }
    constexpr std::size_t longest = 8192;
    LinuxStatusFile cgroup(std::string(m_procRoot).append("/").append(std::to_string(pid)).append("/cgroup"));
    const auto unit = parseSystemdUnit(systemdUnitName(cgroup.read(longest).value_or(std::string_view{})));
    return unit && unit->launcher == "flatpak" && unit->application == owner.name.toStdString();
}

}  // namespace kestrune
