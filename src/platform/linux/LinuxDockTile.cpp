#include "platform/linux/LinuxDockTile.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace kestrune {

namespace {

// Owned by a dock that follows the interface.
const QString dockService = QStringLiteral("com.canonical.Unity");
const QString entryPath = QStringLiteral("/com/canonical/unity/launcherentry/kestrune");
const QString entryInterface = QStringLiteral("com.canonical.Unity.LauncherEntry");

// The desktop entry that the program is installed with.
const QString applicationUri = QStringLiteral("application://com.torvandelsyn.kestrune.desktop");

constexpr qlonglong oneUpdate = 1;

}  // namespace

void LinuxDockTile::setActivationPolicy(ActivationPolicy /*policy*/) {
}

void LinuxDockTile::setBadgeLabel(const std::string& label) {
    if (m_hasBadge == !label.empty()) {
        return;
    }
    m_hasBadge = !label.empty();
    m_docks.reset();
    if (m_hasBadge) {
        m_docks = std::make_unique<QDBusServiceWatcher>(dockService, QDBusConnection::sessionBus(),
                                                        QDBusServiceWatcher::WatchForRegistration);
        QObject::connect(m_docks.get(), &QDBusServiceWatcher::serviceRegistered, [this] { tell(); });
    }
    tell();
}

void LinuxDockTile::tell() const {
    QDBusMessage signal = QDBusMessage::createSignal(entryPath, entryInterface, QStringLiteral("Update"));
    // Not "urgent": an update can wait, and some docks come out and stay out for as long as that is set.
    signal << applicationUri
           << QVariantMap{{QStringLiteral("count"), oneUpdate}, {QStringLiteral("count-visible"), m_hasBadge}};
    QDBusConnection::sessionBus().send(signal);
}

}  // namespace kestrune
