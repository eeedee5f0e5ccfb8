#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>

namespace kestrune {

/// Reads single settings from org.freedesktop.portal.Settings and hears of their changes. Main thread.
class PortalSettings final : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<void(const QString& group, const QString& key, const QVariant& value)>;

    explicit PortalSettings(Handler handler);

    /// Listens for changes of every setting. Once.
    void listen();

    /// Asks for one setting; the handler is told when the desktop has it.
    void read(const QString& group, const QString& key);

private:
    Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

    const Handler m_handler;
};

}  // namespace kestrune
