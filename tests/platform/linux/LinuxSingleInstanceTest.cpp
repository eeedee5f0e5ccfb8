#include "platform/linux/LinuxSingleInstance.h"

#include <gtest/gtest.h>

#include <QEvent>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

using Outcome = SingleInstance::Outcome;

/// A first instance that owns the name and never answers. What it held goes with its connection, as when it is killed.
class HangingInstance final : public QDBusVirtualObject {
public:
    HangingInstance() {
        m_connection.registerVirtualObject(QStringLiteral("/com/torvandelsyn/kestrune"), this);
        m_connection.registerService(QStringLiteral("com.torvandelsyn.kestrune"));
    }

    HangingInstance(const HangingInstance&) = delete;
    HangingInstance& operator=(const HangingInstance&) = delete;

    ~HangingInstance() override { QDBusConnection::disconnectFromBus(m_connection.name()); }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage&, const QDBusConnection&) override {
        if (whenAsked) {
            whenAsked();
        }
        return true;
    }

    std::function<void()> whenAsked;

private:
    QDBusConnection m_connection = TestBus::instance().connect();
};

/// A first instance on its way out: its object is gone, its name not yet.
class EndingInstance final : public QDBusVirtualObject {
public:
    EndingInstance() {
        m_connection.registerVirtualObject(QStringLiteral("/com/torvandelsyn/kestrune"), this);
        m_connection.registerService(QStringLiteral("com.torvandelsyn.kestrune"));
    }

    EndingInstance(const EndingInstance&) = delete;
    EndingInstance& operator=(const EndingInstance&) = delete;

    ~EndingInstance() override { QDBusConnection::disconnectFromBus(m_connection.name()); }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        connection.send(message.createErrorReply(QDBusError::UnknownObject, QString()));
        if (++m_timesAsked == 3 && whenAskedThrice) {
            whenAskedThrice();
        }
        return true;
    }

    std::function<void()> whenAskedThrice;

private:
    QDBusConnection m_connection = TestBus::instance().connect();
    int m_timesAsked = 0;
};

/// A first instance whose event loop ends right after it was asked to come forward.
class EndsWhenAsked final : public QObject {
public:
    EndsWhenAsked() { m_instance->installEventFilter(this); }

    LinuxSingleInstance& instance() { return *m_instance; }

    bool eventFilter(QObject*, QEvent* event) override {
        // The call of the bus comes first, and what it left for later second.
        if (event->type() != QEvent::MetaCall || ++m_calls != 2) {
            return false;
        }
        QTimer::singleShot(0, this, [this] { end(); });
        return true;
    }

private:
    void end() {
        m_instance.reset();
        QDBusConnection::disconnectFromBus(std::exchange(m_connection, QDBusConnection(QString())).name());
    }

    QDBusConnection m_connection = TestBus::instance().connect();
    std::unique_ptr<LinuxSingleInstance> m_instance = std::make_unique<LinuxSingleInstance>(m_connection);
    int m_calls = 0;
};

std::optional<Outcome> acquired(
    LinuxSingleInstance& instance, std::function<void()> reopen = [] {}) {
    std::optional<Outcome> answer;
    instance.acquire(std::move(reopen), [&](Outcome outcome) { answer = outcome; });
    static_cast<void>(QTest::qWaitFor([&] { return answer.has_value(); }));
    return answer;
}

}  // namespace

TEST(LinuxSingleInstance, theFirstStartRunsAndALaterOneOnlyBringsItForward) {
    int reopened = 0;
    const QDBusConnection connection = TestBus::instance().connect();
    LinuxSingleInstance first(connection);
    LinuxSingleInstance second(TestBus::instance().connect());
    EXPECT_EQ(acquired(first, [&] { ++reopened; }), Outcome::first);
    EXPECT_EQ(reopened, 0);
    EXPECT_EQ(acquired(second), Outcome::otherCameForward);
    EXPECT_TRUE(QTest::qWaitFor([&] { return reopened == 1; }));
    QDBusConnection::disconnectFromBus(connection.name());
}

TEST(LinuxSingleInstance, withoutABusEveryStartIsTheFirst) {
    LinuxSingleInstance instance(QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_EQ(acquired(instance), Outcome::first);
}

TEST(LinuxSingleInstance, aFirstOneThatHangsIsTold) {
    const HangingInstance first;
    LinuxSingleInstance second(TestBus::instance().connect());
    EXPECT_EQ(acquired(second), Outcome::otherDoesNotAnswer);
}

TEST(LinuxSingleInstance, aFirstOneThatEndsBeforeItAnswersLeavesItsPlace) {
    auto first = std::make_unique<HangingInstance>();
    first->whenAsked = [&] { QTimer::singleShot(0, [&] { first.reset(); }); };
    const QDBusConnection connection = TestBus::instance().connect();
    LinuxSingleInstance second(connection);
    EXPECT_EQ(acquired(second), Outcome::first);
    QDBusConnection::disconnectFromBus(connection.name());
}

TEST(LinuxSingleInstance, aFirstOneThatIsAboutToEndLeavesItsPlace) {
    auto first = std::make_unique<EndingInstance>();
    first->whenAskedThrice = [&] { QTimer::singleShot(0, [&] { first.reset(); }); };
    const QDBusConnection connection = TestBus::instance().connect();
    LinuxSingleInstance second(connection);
    EXPECT_EQ(acquired(second), Outcome::first);
    QDBusConnection::disconnectFromBus(connection.name());
}

TEST(LinuxSingleInstance, aFirstOneThatGoesOnAndOnEndingIsTold) {
    const EndingInstance first;
    LinuxSingleInstance second(TestBus::instance().connect());
    EXPECT_EQ(acquired(second), Outcome::otherDoesNotAnswer);
}

TEST(LinuxSingleInstance, aFirstOneThatEndsBeforeItComesForwardHasNotAnswered) {
    EndsWhenAsked first;
    ASSERT_EQ(acquired(first.instance()), Outcome::first);
    const QDBusConnection connection = TestBus::instance().connect();
    LinuxSingleInstance second(connection);
    EXPECT_EQ(acquired(second), Outcome::first);
    QDBusConnection::disconnectFromBus(connection.name());
}

}  // namespace kestrune
