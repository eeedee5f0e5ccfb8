#pragma once

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QStringList>
#include <QVariantMap>

namespace kestrune {

/// One item with its properties: (ia{sv}).
struct DBusMenuItem {
    int id = 0;
    QVariantMap properties;
};

/// Names of properties that an item no longer has: (ias).
struct DBusMenuItemKeys {
    int id = 0;
    QStringList names;
};

/// An item with everything below it: (ia{sv}av).
struct DBusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayout> children;
};

/// What a host reports about an item: (isvu).
struct DBusMenuEvent {
    int id = 0;
    QString type;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemKeys& keys);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemKeys& keys);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event);

/// Makes the types above known to Qt. May be called again.
void registerDBusMenuTypes();

}  // namespace kestrune

Q_DECLARE_METATYPE(kestrune::DBusMenuItem)
Q_DECLARE_METATYPE(kestrune::DBusMenuItemKeys)
Q_DECLARE_METATYPE(kestrune::DBusMenuLayout)
Q_DECLARE_METATYPE(kestrune::DBusMenuEvent)
