#include "platform/linux/LinuxLinkOpener.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDBusUnixFileDescriptor>
#include <QFile>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

class LinuxLinkOpenerTest : public testing::Test {
protected:
    LinuxLinkOpenerTest() : m_bus(TestBus::instance().connect()) {
        fs::create_directories(folder.path("help"));
        fs::create_directories(folder.path("programs"));
        fs::create_directories(folder.path("share/dbus-1/services"));
        folder.write("help/updates.html", "<!doctype html>");
    }

    ~LinuxLinkOpenerTest() override { m_bus.unregisterService(portalName); }

    /// A program that tells what it was asked and what of the environment it sees.
    void installProgram(const std::string& name) {
        const std::string told = folder.path("told");
        const std::string path =
            folder.write("programs/" + name, "#!/bin/sh\nprintf '%s\\n' \"$*\" \"${APPDIR-none}\" > " + told +
                                                 ".new\nmv " + told + ".new " + told + "\n");
        ::chmod(path.c_str(), 0755);
    }

    void announcePortal() {
        folder.write("share/dbus-1/services/org.freedesktop.portal.Desktop.service", "[D-BUS Service]\n");
    }

    void startPortal() {
        announcePortal();
        portal.answer = [](const QDBusMessage&) {
            return QVariantList{QVariant::fromValue(QDBusObjectPath(QStringLiteral("/request")))};
        };
        ASSERT_TRUE(m_bus.registerService(portalName));
    }

    /// What the program told, once it did.
    std::string told() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return fs::exists(folder.path("told")); }));
        return TemporaryFolder::contentOf(folder.path("told"));
    }

    const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
    TemporaryFolder folder;

private:
    QDBusConnection m_bus;

protected:
    FakeBusObject portal{m_bus, QStringLiteral("/org/freedesktop/portal/desktop")};
    LinuxLinkOpener opener{folder.path("help/../help"), {{folder.path("share")}, folder.path("programs")}};
};

TEST_F(LinuxLinkOpenerTest, portalIsAskedToOpenAnAddress) {
    startPortal();
    EXPECT_TRUE(opener.open("https://kestrune.example/help?a=b#c"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return portal.count(QStringLiteral("OpenURI")) == 1; }));
    EXPECT_EQ(portal.messages.last().interface(), QStringLiteral("org.freedesktop.portal.OpenURI"));
    EXPECT_EQ(portal.messages.last().signature(), QStringLiteral("ssa{sv}"));
    EXPECT_EQ(portal.messages.last().arguments().at(1).toString(),
              QStringLiteral("https://kestrune.example/help?a=b#c"));
}

TEST_F(LinuxLinkOpenerTest, portalGetsAnInstalledPageAsADescriptor) {
    startPortal();
    EXPECT_TRUE(opener.open("updates"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return portal.count(QStringLiteral("OpenFile")) == 1; }));
    const auto descriptor = portal.messages.last().arguments().at(1).value<QDBusUnixFileDescriptor>();
    ASSERT_TRUE(descriptor.isValid());
    QFile page;
    ASSERT_TRUE(page.open(descriptor.fileDescriptor(), QIODevice::ReadOnly));
    EXPECT_EQ(page.readAll(), QByteArray("<!doctype html>"));
}

TEST_F(LinuxLinkOpenerTest, withoutAPortalTheProgramIsStarted) {
    installProgram("xdg-open");
    installProgram("gio");
    EXPECT_TRUE(opener.open("https://kestrune.example/a?b=$HOME;c"));
    EXPECT_EQ(told(), "https://kestrune.example/a?b=$HOME;c\nnone\n");
}

TEST_F(LinuxLinkOpenerTest, installedPageIsOpenedByItsAddress) {
    installProgram("gio");
    EXPECT_TRUE(opener.open("updates"));
    EXPECT_EQ(told(), "open file://" + folder.path("help/updates.html") + "\nnone\n");
}

TEST_F(LinuxLinkOpenerTest, portalThatCannotOpenLinksIsReplacedByTheProgram) {
    startPortal();
    portal.answer = nullptr;
    installProgram("xdg-open");
    EXPECT_TRUE(opener.open("https://kestrune.example/"));
    EXPECT_EQ(told(), "https://kestrune.example/\nnone\n");
}

TEST_F(LinuxLinkOpenerTest, portalThatIsAnnouncedButDoesNotStartIsReplacedByTheProgram) {
    announcePortal();
    installProgram("xdg-open");
    EXPECT_TRUE(opener.open("https://kestrune.example/"));
    EXPECT_EQ(told(), "https://kestrune.example/\nnone\n");
}

TEST_F(LinuxLinkOpenerTest, variablesOfTheBundleAreNotHandedOn) {
    installProgram("xdg-open");
    qputenv("APPDIR", "/mount/of/the/bundle");
    EXPECT_TRUE(opener.open("https://kestrune.example/"));
    qunsetenv("APPDIR");
    EXPECT_EQ(told(), "https://kestrune.example/\nnone\n");
}

TEST_F(LinuxLinkOpenerTest, nobodyIsAskedWhereNobodyCanOpenALink) {
    EXPECT_FALSE(opener.open("https://kestrune.example/"));
    EXPECT_FALSE(opener.open("updates"));
}

TEST_F(LinuxLinkOpenerTest, onlySecureAddressesAndInstalledPagesAreOpened) {
    startPortal();
    installProgram("xdg-open");
    for (const char* const address : {"http://kestrune.example/", "file:///etc/passwd", "https://", "https://a b",
                                      "https://a\nb", "", "help", "../updates", "/etc/passwd", "updates.html", "-e"}) {
        EXPECT_FALSE(opener.open(address)) << address;
    }
    EXPECT_TRUE(portal.messages.isEmpty());
    EXPECT_FALSE(fs::exists(folder.path("told")));
}

}  // namespace
}  // namespace kestrune
