#include "platform/linux/TrayRegistration.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

#include <memory>

#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

constexpr TrayRegistration::Grace shortGrace{std::chrono::milliseconds{200}, std::chrono::milliseconds{200}};

/// A panel with its watcher, which a test can start and end.
class FakePanel final {
public:
    FakePanel() {
        m_watcher.answer = [this](const QDBusMessage& message) -> std::optional<QVariantList> {
            if (message.member() == QLatin1String("RegisterStatusNotifierItem")) {
                registered.append(message.arguments().at(0).toString());
                return QVariantList();
            }
            if (message.member() == QLatin1String("Get")) {
                return QVariantList{QVariant::fromValue(QDBusVariant(hasHost))};
            }
            return std::nullopt;
        };
        m_connection.registerService(watcherName);
    }

    FakePanel(const FakePanel&) = delete;
    FakePanel& operator=(const FakePanel&) = delete;

    ~FakePanel() { m_connection.unregisterService(watcherName); }

    void setHost(bool present) {
        hasHost = present;
        m_connection.send(QDBusMessage::createSignal(watcherPath, watcherName,
                                                     present ? QStringLiteral("StatusNotifierHostRegistered")
                                                             : QStringLiteral("StatusNotifierHostUnregistered")));
    }

    bool hasHost = true;
    QStringList registered;

private:
    QDBusConnection m_connection = TestBus::instance().connect();
    FakeBusObject m_watcher{m_connection, watcherPath};
};

class TrayRegistrationTest : public ::testing::Test {
protected:
    bool becomesHosted() {
        return QTest::qWaitFor([this] { return m_registration.isHosted(); });
    }

    bool losesItsHost() {
        return QTest::qWaitFor([this] { return !m_registration.isHosted(); });
    }

    QDBusConnection m_program = TestBus::instance().connect();
    int m_unavailable = 0;
    TrayRegistration m_registration{m_program, [this] { ++m_unavailable; }, shortGrace};
};

}  // namespace

TEST_F(TrayRegistrationTest, registersUnderItsNameOnTheBus) {
    const FakePanel panel;
    m_registration.start();
    ASSERT_TRUE(becomesHosted());
    EXPECT_EQ(panel.registered, QStringList(m_program.baseService()));
}

TEST_F(TrayRegistrationTest, aHostedItemIsNeverCalledUnavailable) {
    const FakePanel panel;
    m_registration.start();
    ASSERT_TRUE(becomesHosted());
    EXPECT_FALSE(QTest::qWaitFor([this] { return m_unavailable > 0; }, 250));
}

TEST_F(TrayRegistrationTest, withoutAPanelItIsUnavailableAfterAWhile) {
    m_registration.start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_unavailable == 1; }));
    EXPECT_FALSE(m_registration.isHosted());
}

TEST_F(TrayRegistrationTest, withoutAHostItIsUnavailableThoughThereIsAWatcher) {
    FakePanel panel;
    panel.hasHost = false;
    m_registration.start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_unavailable == 1; }));
    EXPECT_FALSE(m_registration.isHosted());
}

TEST_F(TrayRegistrationTest, aPanelThatAppearsLaterShowsTheItem) {
    m_registration.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_unavailable == 1; }));
    const FakePanel panel;
    EXPECT_TRUE(becomesHosted());
    EXPECT_EQ(panel.registered, QStringList(m_program.baseService()));
}

TEST_F(TrayRegistrationTest, aHostThatAppearsLaterShowsTheItem) {
    FakePanel panel;
    panel.hasHost = false;
    m_registration.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_unavailable == 1; }));
    panel.setHost(true);
    EXPECT_TRUE(becomesHosted());
    panel.setHost(false);
    EXPECT_TRUE(losesItsHost());
}

TEST_F(TrayRegistrationTest, registersAgainWhenThePanelRestarts) {
    auto panel = std::make_unique<FakePanel>();
    m_registration.start();
    ASSERT_TRUE(becomesHosted());
    panel.reset();
    ASSERT_TRUE(losesItsHost());
    const FakePanel next;
    EXPECT_TRUE(becomesHosted());
    EXPECT_EQ(next.registered, QStringList(m_program.baseService()));
    EXPECT_EQ(m_unavailable, 0);
}

TEST_F(TrayRegistrationTest, aPanelThatStaysAwayMakesItUnavailable) {
    auto panel = std::make_unique<FakePanel>();
    m_registration.start();
    ASSERT_TRUE(becomesHosted());
    panel.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_unavailable == 1; }));
}

TEST(TrayRegistration, withoutABusItIsUnavailable) {
    int unavailable = 0;
    TrayRegistration registration(
        QDBusConnection(QStringLiteral("no such connection")), [&] { ++unavailable; }, shortGrace);
    registration.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return unavailable == 1; }));
}

}  // namespace kestrune
