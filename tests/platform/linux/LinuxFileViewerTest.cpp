#include "platform/linux/LinuxFileViewer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {

TEST(LinuxFileViewer, encodesEveryByteThatIsNotPlain) {
    EXPECT_EQ(LinuxFileViewer::fileUri("/home/anna/a b%#?\xFF\xC3\xA4~-._"),
              "file:///home/anna/a%20b%25%23%3F%FF%C3%A4~-._");
}

TEST(LinuxFileViewer, knowsTheEnclosingFolder) {
    EXPECT_EQ(LinuxFileViewer::enclosingFolder("/home/anna/file"), "/home/anna");
    EXPECT_EQ(LinuxFileViewer::enclosingFolder("/home/anna/"), "/home");
    EXPECT_EQ(LinuxFileViewer::enclosingFolder("/home"), "/");
    EXPECT_EQ(LinuxFileViewer::enclosingFolder("/"), "/");
}

TEST(LinuxFileViewer, asksTheFileManagerToShowTheItem) {
    QDBusConnection desktop = TestBus::instance().connect();
    FakeBusObject manager(desktop, QStringLiteral("/org/freedesktop/FileManager1"));
    manager.answer = [](const QDBusMessage&) { return QVariantList(); };
    ASSERT_TRUE(desktop.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    LinuxFileViewer viewer;
    viewer.reveal("/home/anna/a b");
    ASSERT_TRUE(QTest::qWaitFor([&] { return manager.count(QStringLiteral("ShowItems")) == 1; }));
    EXPECT_EQ(manager.messages.last().arguments().at(0).toStringList(),
              QStringList(QStringLiteral("file:///home/anna/a%20b")));
}

TEST(LinuxFileViewer, withoutAFileManagerToAskTheFolderIsOpenedAsByAnyOtherProgram) {
    TestBus::instance();
    const TemporaryFolder folder;
    const std::string told = folder.path("told");
    const std::string opener = folder.write("opener", "#!/bin/sh\nprintf '%s\\n' \"$*\" \"${APPDIR-none}\" > " + told +
                                                          ".new\nmv " + told + ".new " + told + "\n");
    ASSERT_EQ(::chmod(opener.c_str(), 0755), 0);
    qputenv("APPDIR", "/mount/of/the/bundle");
    LinuxFileViewer viewer(opener);
    viewer.reveal("/home/anna/a b/file");
    EXPECT_TRUE(QTest::qWaitFor([&told] { return std::filesystem::exists(told); }));
    qunsetenv("APPDIR");
    EXPECT_EQ(TemporaryFolder::contentOf(told), "file:///home/anna/a%20b\nnone\n");
}

}  // namespace kestrune
