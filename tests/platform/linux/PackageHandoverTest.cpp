#include "platform/linux/PackageHandover.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>
#include <optional>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

constexpr std::chrono::milliseconds plenty{20'000};

class PackageHandoverTest : public ::testing::Test {
protected:
    /// The desktop's opener, which does what the shell makes of text.
    [[nodiscard]] QString opener(const std::string& text) const {
        const std::string path = m_folder.write("opener", "#!/bin/sh\n" + text + "\n");
        ::chmod(path.c_str(), S_IRWXU);
        return QString::fromStdString(path);
    }

    /// Whether somebody took "/tmp/a b.deb".
    std::optional<bool> offer(const QString& program, std::chrono::milliseconds patience = plenty) {
        std::optional<bool> taken;
        PackageHandover handover(TestBus::instance().connect(), program, patience);
        handover.offer("/tmp/a b.deb", [&taken](bool isTaken) { taken = isTaken; });
        EXPECT_FALSE(taken.has_value());
        EXPECT_TRUE(QTest::qWaitFor([&taken] { return taken.has_value(); }, 10'000));
        return taken;
    }

    TemporaryFolder m_folder;
};

/// The session's package installer.
class FakePackageInstaller final {
public:
    FakePackageInstaller()
        : m_bus(TestBus::instance().connect()), object(m_bus, QStringLiteral("/org/freedesktop/PackageKit")) {
        object.answer = [](const QDBusMessage&) { return QVariantList(); };
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.PackageKit")));
    }

    FakePackageInstaller(const FakePackageInstaller&) = delete;
    FakePackageInstaller& operator=(const FakePackageInstaller&) = delete;

    ~FakePackageInstaller() { m_bus.unregisterService(QStringLiteral("org.freedesktop.PackageKit")); }

private:
    QDBusConnection m_bus;

public:
    FakeBusObject object;
};

}  // namespace

TEST_F(PackageHandoverTest, theSessionsInstallerGetsThePackageFirst) {
    FakePackageInstaller installer;
    EXPECT_EQ(offer(opener("exit 4")), true);
    ASSERT_EQ(installer.object.count(QStringLiteral("InstallPackageFiles")), 1);
    EXPECT_EQ(installer.object.messages.last().arguments().at(0).toStringList(),
              QStringList(QStringLiteral("/tmp/a b.deb")));
}

TEST_F(PackageHandoverTest, withoutOneTheDesktopsProgramForPackagesGetsIt) {
    EXPECT_EQ(offer(opener("printf %s \"$1\" > '" + m_folder.path("opened") + "'")), true);
    EXPECT_EQ(TemporaryFolder::contentOf(m_folder.path("opened")), "/tmp/a b.deb");
}

TEST_F(PackageHandoverTest, anInstallerThatDoesNotKnowTheCallIsPassedOver) {
    FakePackageInstaller installer;
    installer.object.answer = [](const QDBusMessage&) { return std::nullopt; };
    EXPECT_EQ(offer(opener("exit 0")), true);
    EXPECT_EQ(offer(opener("exit 4")), false);
}

TEST_F(PackageHandoverTest, whereNobodyTakesPackagesThatIsTold) {
    EXPECT_EQ(offer(opener("exit 3")), false);
    EXPECT_EQ(offer(QStringLiteral("/nonexistent/xdg-open")), false);
    EXPECT_EQ(offer(opener("kill -9 $$")), false);
}

TEST_F(PackageHandoverTest, whoIsStillBusyWithItHasTakenIt) {
    EXPECT_EQ(offer(opener("exec sleep 60"), std::chrono::milliseconds(100)), true);
}

TEST_F(PackageHandoverTest, aProgramOfTheDesktopGetsNothingOfOurAppImage) {
    qputenv("APPDIR", "/tmp/.mount");
    qputenv("LD_LIBRARY_PATH", "/tmp/.mount/lib");
    EXPECT_EQ(offer(opener("test -z \"$APPDIR$LD_LIBRARY_PATH\"")), true);
    qunsetenv("APPDIR");
    qunsetenv("LD_LIBRARY_PATH");
}

}  // namespace kestrune
