#include "platform/linux/LinuxUpdateInstaller.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "base/Localized.h"
#include "base/Text.h"
#include "platform/linux/AppImageReplacement.h"
#include "platform/linux/LinuxFileViewer.h"
#include "platform/linux/LinuxRegularFile.h"
#include "platform/linux/OtherPrograms.h"
#include "platform/linux/PackageHandover.h"
#include "platform/linux/SessionBusCalls.h"

namespace kestrune {

namespace {

constexpr std::size_t longestFileList = std::size_t{1} << 20;
constexpr std::chrono::milliseconds handoverPatience{10'000};
constexpr std::chrono::milliseconds busPatience{1'000};
constexpr uint doNotQueue = 4;

const QString opener = QStringLiteral("/usr/bin/xdg-open");
const QString instanceName = QStringLiteral("com.torvandelsyn.kestrune");

bool isRegularFile(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

void giveUpInstanceName(const SessionBusCalls& bus) {
    QDBusMessage message = SessionBusCalls::toBus(QStringLiteral("ReleaseName"));
    message << instanceName;
    static_cast<void>(bus.call(message));
}

void takeInstanceName(const SessionBusCalls& bus) {
    QDBusMessage message = SessionBusCalls::toBus(QStringLiteral("RequestName"));
    message << instanceName << doNotQueue;
    static_cast<void>(bus.call(message));
}

/// The archive and the folder that was made for it, which stays when something else lies there.
void removeArchive(const std::string& path) {
    ::unlink(path.c_str());
    ::rmdir(LinuxFileViewer::enclosingFolder(path).c_str());
}

}  // namespace

LinuxUpdateInstaller::LinuxUpdateInstaller(std::string executable, std::string startedFile, std::string packageFiles)
    : m_executable(std::move(executable)),
      m_startedFile(std::move(startedFile)),
      m_packageFiles(std::move(packageFiles)),
      m_context(std::make_unique<QObject>()),
      m_queue("com.torvandelsyn.kestrune.update") {
}

LinuxUpdateInstaller::~LinuxUpdateInstaller() = default;

bool LinuxUpdateInstaller::isAppImage() const {
    return m_startedFile != m_executable && isRegularFile(m_startedFile);
}

bool LinuxUpdateInstaller::isPackage() const {
    const std::vector<std::string> files =
        split(readRegularFile(m_packageFiles, longestFileList).value_or(std::string()), '\n');
    return std::find(files.begin(), files.end(), m_executable) != files.end();
}

std::optional<std::string> LinuxUpdateInstaller::archiveSuffix() const {
    if (isAppImage()) {
        return "AppImage";
    }
    return isPackage() ? std::optional<std::string>("deb") : std::nullopt;
}

void LinuxUpdateInstaller::install(const std::string& path, Answer answer) {
    if (isAppImage()) {
        replace(path, answer);
    } else {
        handOver(path, answer);
    }
}

void LinuxUpdateInstaller::replace(const std::string& path, const Answer& answer) {
    m_queue.enqueue([context = m_context.get(), appImage = m_startedFile, path, answer] {
        const std::optional<UpdaterError> error = replaceAppImage(appImage, path);
        if (!error) {
            removeArchive(path);
        }
        QMetaObject::invokeMethod(
            context,
            [error, answer] {
                if (error) {
                    answer(*error);
                } else {
                    answer(Outcome::replaced);
                }
            },
            Qt::QueuedConnection);
    });
}

void LinuxUpdateInstaller::handOver(const std::string& path, const Answer& answer) {
    m_handover = std::make_unique<PackageHandover>(QDBusConnection::sessionBus(), opener, handoverPatience);
    m_handover->offer(path, [path, answer](bool isTaken) {
        if (isTaken) {
            answer(Outcome::handedOver);
        } else {
            answer(UpdaterError{
                UpdaterError::install,
                localized("No program on this system installs packages. The new version is at %1.", {path})});
        }
    });
}

void LinuxUpdateInstaller::relaunch() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        giveUpInstanceName(SessionBusCalls(bus, busPatience));
    }
    if (startDetached(QString::fromStdString(m_startedFile), {})) {
        QCoreApplication::exit();
    } else if (bus.isConnected()) {
        takeInstanceName(SessionBusCalls(bus, busPatience));
    }
}

}  // namespace kestrune
