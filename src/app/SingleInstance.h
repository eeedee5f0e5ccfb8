#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

#include <functional>

namespace kestrune {

/// Makes sure that the program runs once a session: the first start owns a name on the bus, every later one asks it
/// to come forward. The name goes with its owner, however that ends. Without a bus every start counts as the first.
/// Main thread.
class SingleInstance final : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Outcome {
        first,
        otherCameForward,    ///< the program runs already and has been told
        otherDoesNotAnswer,  ///< the program runs already but is too busy, or stopped
    };

    /// reopen is called when the program was started again.
    SingleInstance(QDBusConnection connection, std::function<void()> reopen);
    ~SingleInstance() override;

    /// Answers within two seconds which start this is, at once without a bus, else from the event loop. A bus that does
    /// not answer in time counts as none.
    void acquire(std::function<void(Outcome)> answer);

    [[nodiscard]] QString introspect(const QString& objectPath) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void requestName(std::function<void(bool isTaken)> answer);
    void activateOther(const std::function<void(Outcome)>& answer);

    QDBusConnection m_connection;
    const std::function<void()> m_reopen;
};

}  // namespace kestrune
