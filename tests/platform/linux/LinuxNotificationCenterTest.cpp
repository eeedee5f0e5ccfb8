#include "platform/linux/LinuxNotificationCenter.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

const QString serverName = QStringLiteral("org.freedesktop.Notifications");

/// The desktop's notification service on the session bus.
class FakeNotificationServer final {
public:
    explicit FakeNotificationServer(QStringList capabilities) {
        m_object.answer = [capabilities](const QDBusMessage& message) -> std::optional<QVariantList> {
            if (message.member() == QLatin1String("GetCapabilities")) {
                return QVariantList{capabilities};
            }
            return QVariantList{1U};
        };
        m_connection.registerService(serverName);
    }

    FakeNotificationServer(const FakeNotificationServer&) = delete;
    FakeNotificationServer& operator=(const FakeNotificationServer&) = delete;

    ~FakeNotificationServer() { m_connection.unregisterService(serverName); }

    /// The arguments of the only notification.
    QVariantList shown() {
        if (!QTest::qWaitFor([this] { return m_object.count(QStringLiteral("Notify")) == 1; })) {
            return {};
        }
        return m_object.messages.last().arguments();
    }

private:
    QDBusConnection m_connection = TestBus::instance().connect();
    FakeBusObject m_object{m_connection, QStringLiteral("/org/freedesktop/Notifications")};
};

std::optional<NotificationAuthorization> authorization(LinuxNotificationCenter& center) {
    std::optional<NotificationAuthorization> answer;
    center.queryAuthorization([&](NotificationAuthorization value) { answer = value; });
    static_cast<void>(QTest::qWaitFor([&] { return answer.has_value(); }));
    return answer;
}

}  // namespace

TEST(LinuxNotificationCenter, aServerMeansAuthorizedAndNoneDenied) {
    static_cast<void>(TestBus::instance());
    LinuxNotificationCenter center(true);
    EXPECT_EQ(authorization(center), NotificationAuthorization::denied);
    const FakeNotificationServer server({});
    EXPECT_EQ(authorization(center), NotificationAuthorization::authorized);
}

TEST(LinuxNotificationCenter, deliversUnderTheProgramsNameAndNeverReplaces) {
    FakeNotificationServer server({});
    LinuxNotificationCenter center(true);
    center.deliver("Kestrune cleanup results", "Moved 2 items <to> Trash & more.");
    const QVariantList shown = server.shown();
    ASSERT_EQ(shown.size(), 8);
    EXPECT_EQ(shown[0], QStringLiteral("Kestrune"));
    EXPECT_EQ(shown[1], 0U);
    EXPECT_EQ(shown[2], QStringLiteral("kestrune"));
    EXPECT_EQ(shown[3], QStringLiteral("Kestrune cleanup results"));
    EXPECT_EQ(shown[4], QStringLiteral("Moved 2 items <to> Trash & more."));
    EXPECT_TRUE(qdbus_cast<QVariantMap>(shown[6]).contains(QStringLiteral("sound-name")));
}

TEST(LinuxNotificationCenter, escapesTheBodyForAServerThatReadsMarkup) {
    FakeNotificationServer server({QStringLiteral("body"), QStringLiteral("body-markup")});
    LinuxNotificationCenter center(true);
    center.deliver("Kestrune", "Moved <b>x</b> & y.");
    const QVariantList shown = server.shown();
    ASSERT_EQ(shown.size(), 8);
    EXPECT_EQ(shown[4], QStringLiteral("Moved &lt;b&gt;x&lt;/b&gt; &amp; y."));
}

TEST(LinuxNotificationCenter, permissionIsWhatTheServerMeans) {
    const FakeNotificationServer server({});
    LinuxNotificationCenter center(true);
    std::optional<bool> granted;
    center.requestAuthorization([&](bool value) { granted = value; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return granted.has_value(); }));
    EXPECT_EQ(granted, true);
}

TEST(LinuxNotificationCenter, hasNoSoundsOfItsOwn) {
    LinuxNotificationCenter center(false);
    EXPECT_FALSE(center.playSound("Pop"));
    EXPECT_FALSE(center.hasIdentity());
}

TEST(LinuxNotificationCenter, anAnswerAfterItsEndReachesNobody) {
    const FakeNotificationServer server({});
    bool answered = false;
    {
        LinuxNotificationCenter center(true);
        center.queryAuthorization([&](NotificationAuthorization) { answered = true; });
    }
    EXPECT_FALSE(QTest::qWaitFor([&] { return answered; }, 50));
}

}  // namespace kestrune
