#include "platform/linux/LinuxFileViewer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QStringList>

#include <cctype>
#include <string_view>
#include <utility>

#include "platform/linux/OtherPrograms.h"

namespace kestrune {

namespace {

constexpr std::string_view unreservedMarks = "-._~/";

bool isUnreserved(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return (value < 0x80 && std::isalnum(value) != 0) || unreservedMarks.find(byte) != std::string_view::npos;
}

}  // namespace

LinuxFileViewer::LinuxFileViewer(std::string opener)
    : m_opener(std::move(opener)), m_context(std::make_unique<QObject>()) {
}

LinuxFileViewer::~LinuxFileViewer() = default;

std::string LinuxFileViewer::fileUri(const std::string& path) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char byte : path) {
        if (isUnreserved(byte)) {
            uri += byte;
        } else {
            const auto value = static_cast<unsigned char>(byte);
            uri += {'%', digits[value / 16], digits[value % 16]};
        }
    }
    return uri;
}

std::string LinuxFileViewer::enclosingFolder(const std::string& path) {
    const std::size_t end = path.find_last_not_of('/');
    const std::size_t slash = end == std::string::npos ? end : path.rfind('/', end);
    return slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
}

void LinuxFileViewer::reveal(const std::string& path) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message << QStringList(QString::fromStdString(fileUri(path))) << QString();
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), m_context.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_context.get(), [this, watcher, path] {
        watcher->deleteLater();
        if (watcher->isError()) {
            static_cast<void>(startDetached(QString::fromStdString(m_opener),
                                            {QString::fromStdString(fileUri(enclosingFolder(path)))}));
        }
    });
}

}  // namespace kestrune
