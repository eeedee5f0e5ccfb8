#include "platform/linux/LinuxLinkOpener.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "platform/LinkRules.h"
#include "platform/SystemTools.h"
#include "platform/linux/LinuxAccount.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxFileViewer.h"
#include "platform/linux/OtherPrograms.h"

namespace kestrune {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");

bool isRegularFile(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

QDBusMessage portalCall(const QString& method) {
    QDBusMessage message = QDBusMessage::createMethodCall(portal, QStringLiteral("/org/freedesktop/portal/desktop"),
                                                          QStringLiteral("org.freedesktop.portal.OpenURI"), method);
    message << QString();  // no window that a question of the desktop would belong to
    return message;
}

std::vector<ToolCommand> programsFor(const std::string& folder, const std::string& uri) {
    return {{folder + "/xdg-open", {uri}}, {folder + "/gio", {"open", uri}}};
}

bool isThere(const ToolCommand& program) {
    return ::access(program.executable.c_str(), X_OK) == 0;
}

LinuxLinkOpener::Desktop standardDesktop() {
    std::vector<std::string> folders;
    for (const std::string& folder : split(LinuxAccount::variable("XDG_DATA_DIRS"), ':')) {
        folders.push_back(folder);
    }
    folders.insert(folders.end(), {LinuxAccount::absoluteVariable("XDG_DATA_HOME"),
                                   LinuxAccount::homeDirectory() + "/.local/share", "/usr/local/share", "/usr/share"});
    std::erase_if(folders, [](const std::string& folder) { return !folder.starts_with('/'); });
    return {std::move(folders)};
}

}  // namespace

LinuxLinkOpener::LinuxLinkOpener(std::string helpFolder) : LinuxLinkOpener(std::move(helpFolder), standardDesktop()) {
}

LinuxLinkOpener::LinuxLinkOpener(std::string helpFolder, Desktop desktop)
    : m_helpFolder(std::move(helpFolder)), m_desktop(std::move(desktop)), m_context(std::make_unique<QObject>()) {
}

LinuxLinkOpener::~LinuxLinkOpener() = default;

bool LinuxLinkOpener::open(const std::string& address) {
    if (LinkRules::isWebAddress(address)) {
        QDBusMessage message = portalCall(QStringLiteral("OpenURI"));
        message << QString::fromStdString(address) << QVariantMap();
        return askPortal(message, address);
    }
    const std::optional<std::string> file = LinkRules::helpPage(m_helpFolder, address);
    if (!file) {
        return false;
    }
    // The portal takes files as descriptors.
    const LinuxFileDescriptor page(::open(file->c_str(), O_RDONLY | O_CLOEXEC));
    QDBusMessage message = portalCall(QStringLiteral("OpenFile"));
    message << QVariant::fromValue(QDBusUnixFileDescriptor(page.get())) << QVariantMap();
    return page && askPortal(message, LinuxFileViewer::fileUri(*file));
}

bool LinuxLinkOpener::hasPortal() const {
    const std::string service = "/dbus-1/services/" + portal.toStdString() + ".service";
    return std::any_of(m_desktop.dataFolders.begin(), m_desktop.dataFolders.end(),
                       [&service](const std::string& folder) { return isRegularFile(folder + service); }) &&
           QDBusConnection::sessionBus().isConnected();
}

bool LinuxLinkOpener::askPortal(const QDBusMessage& message, const std::string& uri) {
    if (!hasPortal()) {
        return startProgram(uri);
    }
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), m_context.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_context.get(), [this, watcher, uri] {
        watcher->deleteLater();
        if (watcher->isError()) {
            static_cast<void>(startProgram(uri));
        }
    });
    return true;
}

bool LinuxLinkOpener::startProgram(const std::string& uri) const {
    const std::vector<ToolCommand> programs = programsFor(m_desktop.programs, uri);
    const auto program = std::find_if(programs.begin(), programs.end(), isThere);
    if (program == programs.end()) {
        return false;
    }
    QStringList arguments;
    for (const std::string& argument : program->arguments) {
        arguments << QString::fromStdString(argument);
    }
    return startDetached(QString::fromStdString(program->executable), arguments);
}

}  // namespace kestrune
