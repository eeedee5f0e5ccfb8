#include "platform/linux/PortalSettings.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace kestrune {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

/// Read wraps the value in one variant more than SettingChanged does.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

}  // namespace

PortalSettings::PortalSettings(Handler handler) : m_handler(std::move(handler)) {
}

void PortalSettings::listen() {
    // Connecting looks the slot's types up by name, which only registered ones have.
    qRegisterMetaType<QDBusVariant>();
    // From any sender: naming one would make Qt ask the bus for its owner and wait for the answer.
    QDBusConnection::sessionBus().connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"),
                                          this, SLOT(settingChanged(QString, QString, QDBusVariant)));
}

void PortalSettings::read(const QString& group, const QString& key) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    message << group << key;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, group, key] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) {
            m_handler(group, key, unwrapped(reply.value().variant()));
        }
    });
}

void PortalSettings::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    m_handler(group, key, unwrapped(value.variant()));
}

}  // namespace kestrune
