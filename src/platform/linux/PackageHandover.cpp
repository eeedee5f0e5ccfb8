#include "platform/linux/PackageHandover.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QVariantMap>

#include <limits>
#include <utility>

#include "platform/linux/OtherPrograms.h"

namespace kestrune {

namespace {

const QString installer = QStringLiteral("org.freedesktop.PackageKit");

QDBusMessage installCall(const QString& path) {
    QDBusMessage message = QDBusMessage::createMethodCall(installer, QStringLiteral("/org/freedesktop/PackageKit"),
                                                          QStringLiteral("org.freedesktop.PackageKit.Modify2"),
                                                          QStringLiteral("InstallPackageFiles"));
    message << QStringList(path) << QStringLiteral("show-confirm-install,show-progress,show-warning")
            << QStringLiteral("com.torvandelsyn.kestrune.desktop") << QVariantMap();
    return message;
}

/// The bus says that nobody is there who could take the call. Any other error is one the user has seen.
bool isFromBus(const QDBusError& error) {
    return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error."));
}

}  // namespace

PackageHandover::PackageHandover(QDBusConnection bus, QString opener, std::chrono::milliseconds patience)
    : m_bus(std::move(bus)), m_opener(std::move(opener)) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] { finish(true); });
    connect(&m_process, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
        finish(exitCode == 0 && status == QProcess::NormalExit);
    });
    connect(
        &m_process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                finish(false);
            }
        },
        Qt::QueuedConnection);
    m_process.setProcessEnvironment(environmentForOthers());
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
}

PackageHandover::~PackageHandover() {
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished();
}

void PackageHandover::offer(const std::string& path, Answer answer) {
    m_path = QString::fromStdString(path);
    m_answer = std::move(answer);
    m_patience.start();
    if (m_bus.isConnected()) {
        askInstaller();
    } else {
        askOpener();
    }
}

void PackageHandover::askInstaller() {
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(installCall(m_path), std::numeric_limits<int>::max()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError() && isFromBus(watcher->error())) {
            askOpener();
        } else {
            finish(true);
        }
    });
}

void PackageHandover::askOpener() {
    if (m_answer) {
        m_process.start(m_opener, {m_path});
    }
}

void PackageHandover::finish(bool isTaken) {
    m_patience.stop();
    if (const Answer answer = std::exchange(m_answer, nullptr)) {
        answer(isTaken);
    }
}

}  // namespace kestrune
