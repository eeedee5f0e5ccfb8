#include "platform/linux/LinuxDockTile.h"

#include <gtest/gtest.h>

#include <QDBusArgument>

#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

const QString dockService = QStringLiteral("com.canonical.Unity");

/// A dock: hears what entries tell about themselves.
class FakeDock final : public QObject {
    Q_OBJECT

public:
    FakeDock() {
        m_connection.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                             QStringLiteral("Update"), this, SLOT(hear(QString, QVariantMap)));
    }

    FakeDock(const FakeDock&) = delete;
    FakeDock& operator=(const FakeDock&) = delete;

    ~FakeDock() override { QDBusConnection::disconnectFromBus(m_connection.name()); }

    /// Whether so many updates come.
    [[nodiscard]] bool hears(qsizetype count) const {
        return QTest::qWaitFor([&] { return updates.size() == count; });
    }

    void takeTheServiceName() { m_connection.registerService(dockService); }

    QStringList uris;
    QList<QVariantMap> updates;

private:
    Q_SLOT void hear(const QString& uri, const QVariantMap& properties) {
        uris.append(uri);
        updates.append(properties);
    }

    QDBusConnection m_connection = TestBus::instance().connect();
};

const QVariantMap marked{{QStringLiteral("count"), 1LL}, {QStringLiteral("count-visible"), true}};
const QVariantMap unmarked{{QStringLiteral("count"), 1LL}, {QStringLiteral("count-visible"), false}};

}  // namespace

TEST(LinuxDockTile, aBadgeMarksTheEntryOfTheInstalledProgramAndIsTakenAwayAgain) {
    const FakeDock dock;
    LinuxDockTile tile;
    tile.setBadgeLabel("↑");
    ASSERT_TRUE(dock.hears(1));
    tile.setBadgeLabel({});
    ASSERT_TRUE(dock.hears(2));
    EXPECT_EQ(dock.updates, (QList<QVariantMap>{marked, unmarked}));
    EXPECT_EQ(dock.uris.first(), QStringLiteral("application://com.torvandelsyn.kestrune.desktop"));
}

TEST(LinuxDockTile, theSameBadgeIsToldOnce) {
    const FakeDock dock;
    LinuxDockTile tile;
    tile.setBadgeLabel({});
    tile.setBadgeLabel("↑");
    tile.setBadgeLabel("↑");
    tile.setBadgeLabel({});
    ASSERT_TRUE(dock.hears(2));
    EXPECT_EQ(dock.updates, (QList<QVariantMap>{marked, unmarked}));
}

TEST(LinuxDockTile, aDockThatStartsLaterIsToldOfTheBadge) {
    LinuxDockTile tile;
    {
        const FakeDock earlier;
        tile.setBadgeLabel("↑");
        ASSERT_TRUE(earlier.hears(1));
    }
    FakeDock dock;
    dock.takeTheServiceName();
    ASSERT_TRUE(dock.hears(1));
    EXPECT_EQ(dock.updates.first(), marked);
}

TEST(LinuxDockTile, theActivationPolicyIsTheWindowManagersOwnDecision) {
    const FakeDock dock;
    LinuxDockTile tile;
    tile.setActivationPolicy(DockTile::ActivationPolicy::regular);
    tile.setActivationPolicy(DockTile::ActivationPolicy::accessory);
    // What was told before would be heard before.
    tile.setBadgeLabel("↑");
    ASSERT_TRUE(dock.hears(1));
    EXPECT_EQ(dock.updates.first(), marked);
}

}  // namespace kestrune

#include "LinuxDockTileTest.moc"
