#include "platform/linux/LinuxAppearance.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

#include <vector>

#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

class LinuxAppearanceTest : public ::testing::Test {
protected:
    LinuxAppearanceTest() {
        m_settings.answer = [this](const QDBusMessage& message) -> std::optional<QVariantList> {
            const QVariant value = m_values.value(message.arguments().at(1).toString());
            if (!value.isValid()) {
                return std::nullopt;
            }
            return QVariantList{QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(value))))};
        };
        m_portal.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    ~LinuxAppearanceTest() override { m_portal.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop")); }

    void start() {
        m_appearance.start([this](AppearanceSettings settings) { m_told.push_back(settings); });
    }

    bool tells(AppearanceSettings expected) {
        return QTest::qWaitFor([&] { return !m_told.empty() && m_told.back() == expected; });
    }

    QDBusConnection m_portal = TestBus::instance().connect();
    FakeBusObject m_settings{m_portal, portalPath};
    QVariantMap m_values;
    std::vector<AppearanceSettings> m_told;
    LinuxAppearance m_appearance;
};

}  // namespace

TEST_F(LinuxAppearanceTest, tellsADarkSchemeAndStillDesktops) {
    m_values = {{QStringLiteral("color-scheme"), 1U}, {QStringLiteral("enable-animations"), false}};
    start();
    EXPECT_TRUE(tells({.dark = true, .reduceMotion = true}));
}

TEST_F(LinuxAppearanceTest, hearsOfChanges) {
    m_values = {{QStringLiteral("color-scheme"), 2U}};
    start();
    ASSERT_TRUE(tells({.dark = false}));
    QDBusMessage signal = QDBusMessage::createSignal(portalPath, settingsInterface, QStringLiteral("SettingChanged"));
    signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
           << QVariant::fromValue(QDBusVariant(1U));
    m_portal.send(signal);
    EXPECT_TRUE(tells({.dark = true}));
}

TEST_F(LinuxAppearanceTest, saysNothingWhereTheDesktopSaysNothing) {
    start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_settings.count(QStringLiteral("Read")) == 2; }));
    EXPECT_FALSE(QTest::qWaitFor([this] { return !m_told.empty(); }, 50));
}

}  // namespace kestrune
