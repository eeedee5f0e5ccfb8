#include "platform/linux/GApplicationSource.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QProcess>

#include <csignal>
#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

namespace fs = std::filesystem;

// A small program of the kind that is meant, in a process of its own.
constexpr const char* program = R"(
import sys
import gi
gi.require_version('Gio', '2.0')
from gi.repository import Gio, GLib

name, mode = sys.argv[1:]
app = Gio.Application(application_id=name)

def quit(action, parameter):
    print('asked', flush=True)
    if mode == 'asks':
        GLib.MainLoop().run()
    app.quit()

if mode != 'without':
    action = Gio.SimpleAction.new('quit', GLib.VariantType.new('s') if mode == 'parameter' else None)
    action.set_enabled(mode != 'disabled')
    action.connect('activate', quit)
    app.add_action(action)
app.connect('activate', lambda app: (app.hold(), print('ready', flush=True)))
app.run([])
)";

class GApplicationSourceTest : public ::testing::Test {
protected:
    GApplicationSourceTest() { TestBus::instance(); }

    ~GApplicationSourceTest() override {
        m_program.kill();
        m_program.waitForFinished();
    }

    std::int32_t start(const QString& mode) {
        m_program.start(QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral("-c"), QString::fromUtf8(program), m_name, mode});
        EXPECT_TRUE(says("ready\n")) << m_program.readAllStandardError().toStdString();
        return static_cast<std::int32_t>(m_program.processId());
    }

    bool says(const QByteArray& text) {
        return QTest::qWaitFor(
            [&] {
                m_said += m_program.readAllStandardOutput();
                return m_said.contains(text);
            },
            20'000);
    }

    bool isEnded() {
        return QTest::qWaitFor([this] { return m_program.state() == QProcess::NotRunning; });
    }

    static bool isMeant() { return true; }

    const QString m_name = QStringLiteral("com.example.Editor-of.Text");
    QProcess m_program;
    QByteArray m_said;
    GApplicationSource m_source{"/proc"};
};

}  // namespace

TEST_F(GApplicationSourceTest, theQuitActionEndsTheProgram) {
    const std::int32_t pid = start(QStringLiteral("quits"));
    EXPECT_TRUE(m_source.isAvailable());
    EXPECT_TRUE(m_source.close(pid, isMeant));
    EXPECT_TRUE(isEnded());
    EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
    EXPECT_FALSE(m_source.close(pid, isMeant));
}

TEST_F(GApplicationSourceTest, aProgramThatAsksItsUserHoldsNobodyUp) {
    const std::int32_t pid = start(QStringLiteral("asks"));
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(m_source.close(pid, isMeant));
    EXPECT_LT(timer.elapsed(), 2'000);
    EXPECT_TRUE(says("asked\n"));
    EXPECT_EQ(m_program.state(), QProcess::Running);
}

TEST_F(GApplicationSourceTest, aProgramWithoutAPlainQuitActionIsLeftAlone) {
    for (const QString& mode : {QStringLiteral("without"), QStringLiteral("disabled"), QStringLiteral("parameter")}) {
        const std::int32_t pid = start(mode);
        EXPECT_FALSE(m_source.close(pid, isMeant)) << mode.toStdString();
        m_program.kill();
        ASSERT_TRUE(m_program.waitForFinished());
        EXPECT_FALSE(m_said.contains("asked"));
        m_said.clear();
    }
}

TEST_F(GApplicationSourceTest, anotherProcessIsNotTakenForIt) {
    const std::int32_t pid = start(QStringLiteral("quits"));
    EXPECT_FALSE(m_source.close(::getppid(), isMeant));
    EXPECT_FALSE(m_source.close(::getpid(), isMeant));
    EXPECT_FALSE(m_source.close(0, isMeant));
    EXPECT_FALSE(m_source.close(pid, [] { return false; }));
    EXPECT_FALSE(
        QTest::qWaitFor([this] { return m_said.append(m_program.readAllStandardOutput()).contains("asked"); }, 50));
}

TEST_F(GApplicationSourceTest, aProgramThatHangsHoldsNobodyUp) {
    const std::int32_t pid = start(QStringLiteral("quits"));
    ASSERT_EQ(::kill(pid, SIGSTOP), 0);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(m_source.close(pid, isMeant));
    EXPECT_LT(timer.elapsed(), 2'000);
}

TEST_F(GApplicationSourceTest, aProgramInASandboxIsReachedThroughItsProxy) {
    const std::int32_t proxy = start(QStringLiteral("quits"));
    const TemporaryFolder proc;
    const std::string proxyFolder = std::to_string(proxy);
    fs::create_directory(proc.path(proxyFolder));
    fs::create_directory(proc.path("77"));
    fs::create_symlink("/usr/bin/xdg-dbus-proxy", proc.path(proxyFolder + "/exe"));
    GApplicationSource source(proc.path());

    proc.write("77/cgroup", "0::/app.slice/app-flatpak-com.example.Other-1.scope\n");
    EXPECT_FALSE(source.close(77, isMeant));
    proc.write("77/cgroup", "0::/app.slice/app-gnome-com.example.Editor\\x2dof.Text-1.scope\n");
    EXPECT_FALSE(source.close(77, isMeant));
    proc.write("77/cgroup", "0::/app.slice/app-flatpak-com.example.Editor\\x2dof.Text-1.scope\n");
    EXPECT_TRUE(source.close(77, isMeant));
    EXPECT_TRUE(isEnded());
}

TEST_F(GApplicationSourceTest, listsNothingItself) {
    EXPECT_TRUE(m_source.applications().empty());
    EXPECT_FALSE(m_source.tellsFrontmost());
    EXPECT_FALSE(m_source.isComplete());
}

}  // namespace kestrune
