#include "platform/linux/LinuxFileViewer.h"

#include <gtest/gtest.h>

#include "tests/app/TestBus.h"

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

}  // namespace kestrune
