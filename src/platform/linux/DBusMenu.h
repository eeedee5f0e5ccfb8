#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <vector>

#include "platform/MenuItem.h"

namespace kestrune {

/// The com.canonical.dbusmenu object that hosts read our menu from. Item 0 is the menu itself; every other item keeps
/// its number for good. Main thread.
class DBusMenu final : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Handlers {
        MenuHandler perform;                 ///< called from the event loop, after the host has its answer
        std::function<void()> menuWillOpen;  ///< may call setItems
    };

    static const QString path;

    DBusMenu(QDBusConnection connection, std::vector<MenuItem> items, Handlers handlers);
    ~DBusMenu() override;

    /// Shows items and tells hosts what changed. Their number and their submenus are the same as before.
    void setItems(const std::vector<MenuItem>& items);

    [[nodiscard]] QString introspect(const QString& objectPath) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// The D-Bus properties of one item.
    [[nodiscard]] static QVariantMap properties(const MenuItem& item);

private:
    [[nodiscard]] const MenuItem* item(int id) const;
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage answerProperties(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage layout(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage groupProperties(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage itemProperty(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage eventGroup(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage aboutToShowGroup(const QDBusMessage& message);
    bool handleEvent(int id, const QString& type);
    bool aboutToShow(int id);

    QDBusConnection m_connection;
    std::vector<MenuItem> m_items;
    const Handlers m_handlers;
    uint m_revision = 1;
};

}  // namespace kestrune
