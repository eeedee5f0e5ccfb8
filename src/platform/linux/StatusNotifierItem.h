#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace kestrune {

/// What a StatusNotifierItem shows.
struct TrayTexts {
    QString title;
    QString tooltip;
    QString label;  ///< short text for panels that show one beside the picture
    int percent = 0;
    bool updateAvailable = false;

    bool operator==(const TrayTexts&) const = default;
};

/// The D-Bus object of our tray item: org.kde.StatusNotifierItem, answered under its freedesktop.org name as well.
/// Main thread.
class StatusNotifierItem final : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Handlers {
        std::function<void()> activate;           ///< primary click, or the request for the menu
        std::function<void()> secondaryActivate;  ///< middle click
    };

    static const QString path;

    /// menuPath is where the com.canonical.dbusmenu object lies; menuOnly tells hosts that a click should show it.
    StatusNotifierItem(QDBusConnection connection, QString menuPath, bool menuOnly, Handlers handlers);
    ~StatusNotifierItem() override;

    /// Shows texts, and tells the host what of it is new.
    void setTexts(const TrayTexts& texts);

    /// The values of all D-Bus properties.
    [[nodiscard]] QVariantMap properties() const;

    [[nodiscard]] QString introspect(const QString& objectPath) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QVariant property(const QString& name) const;
    bool handleProperties(const QDBusMessage& message, const QDBusConnection& connection) const;
    void emitSignal(const QString& name, const QVariantList& arguments = {}) const;

    QDBusConnection m_connection;
    const QString m_menuPath;
    const bool m_menuOnly;
    const Handlers m_handlers;
    TrayTexts m_texts;
    mutable QVariant m_pictures;  ///< drawn when a host asks; panels ask several times for each change
};

}  // namespace kestrune
