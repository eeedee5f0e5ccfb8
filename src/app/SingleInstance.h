#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

#include <functional>

namespace kestrune {

/// Makes sure that the program runs once a session: the first start owns a name on the bus, every later one asks it
/// to come forward. Without a bus every start counts as the first. Main thread.
class SingleInstance final : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// reopen is called when the program was started again.
    SingleInstance(QDBusConnection connection, std::function<void()> reopen);
    ~SingleInstance() override;

    /// Answers, from the event loop, whether this is the first start; if not, the first one has been told. A bus that
    /// does not answer in time counts as none.
    void acquire(std::function<void(bool isFirst)> answer);

    [[nodiscard]] QString introspect(const QString& objectPath) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void activateOther(const std::function<void(bool isFirst)>& answer);

    QDBusConnection m_connection;
    const std::function<void()> m_reopen;
};

}  // namespace kestrune
