#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

#include <functional>

#include "platform/SingleInstance.h"

namespace kestrune {

/// The first start of the program owns a name on the bus, every later one asks it to come forward. The name goes with
/// its owner, however that ends. Without a bus, or with one that does not answer in time, every start counts as the
/// first. Main thread.
class LinuxSingleInstance final : public QDBusVirtualObject, public SingleInstance {
    Q_OBJECT

public:
    explicit LinuxSingleInstance(QDBusConnection connection);
    ~LinuxSingleInstance() override;

    /// Answers at once without a bus, else from the event loop.
    void acquire(std::function<void()> reopen, std::function<void(Outcome)> answer) override;

    [[nodiscard]] QString introspect(const QString& objectPath) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void acquire(std::function<void(Outcome)> answer);
    void requestName(std::function<void(bool isTaken)> answer);
    void activateOther(const std::function<void(Outcome)>& answer);

    QDBusConnection m_connection;
    std::function<void()> m_reopen;
    int m_pauses = 0;  ///< that were made to let another one end
};

}  // namespace kestrune
