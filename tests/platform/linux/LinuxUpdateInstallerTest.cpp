#include "platform/linux/LinuxUpdateInstaller.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

namespace fs = std::filesystem;

const std::string program = "/usr/bin/kestrune";
const std::string oldBytes =
    "\x7F"
    "ELF old";
const std::string newBytes =
    "\x7F"
    "ELF new";

class LinuxUpdateInstallerTest : public ::testing::Test {
protected:
    using Answered = Result<UpdateInstaller::Outcome, UpdaterError>;

    [[nodiscard]] std::optional<std::string> suffixFor(const std::string& startedFile,
                                                       const std::string& packageFiles) const {
        return LinuxUpdateInstaller(program, startedFile, packageFiles).archiveSuffix();
    }

    TemporaryFolder m_folder;
    const std::string m_image = m_folder.write("Kestrune.AppImage", oldBytes);
    const std::string m_list = m_folder.write("kestrune.list", "/.\n/usr\n/usr/bin\n/usr/bin/kestrune\n");
};

}  // namespace

TEST_F(LinuxUpdateInstallerTest, theKindOfArchiveIsTheOneTheProgramCameIn) {
    EXPECT_EQ(suffixFor(m_image, "/nonexistent"), "AppImage");
    EXPECT_EQ(suffixFor(m_image, m_list), "AppImage");
    EXPECT_EQ(suffixFor(program, m_list), "deb");
    EXPECT_EQ(suffixFor(program, "/nonexistent"), std::nullopt);
    EXPECT_EQ(suffixFor(program, m_folder.write("other.list", "/usr/bin/kestrune-other\n")), std::nullopt);
    EXPECT_EQ(suffixFor(m_folder.path("gone.AppImage"), "/nonexistent"), std::nullopt);
}

TEST_F(LinuxUpdateInstallerTest, anAppImageIsReplacedAndItsArchiveRemoved) {
    fs::create_directory(m_folder.path("fetch-abcdef"));
    const std::string archive = m_folder.write("fetch-abcdef/kestrune.AppImage", newBytes);
    LinuxUpdateInstaller installer(program, m_image, "/nonexistent");
    std::optional<Answered> answer;
    installer.install(archive, [&answer](Answered told) { answer.emplace(std::move(told)); });
    EXPECT_FALSE(answer.has_value());
    ASSERT_TRUE(QTest::qWaitFor([&answer] { return answer.has_value(); }));
    ASSERT_TRUE(answer->ok());
    EXPECT_EQ(answer->value(), UpdateInstaller::Outcome::replaced);
    EXPECT_EQ(TemporaryFolder::contentOf(m_image), newBytes);
    EXPECT_FALSE(fs::exists(m_folder.path("fetch-abcdef")));
}

TEST_F(LinuxUpdateInstallerTest, whatCannotBeInstalledIsToldAndStays) {
    const std::string archive = m_folder.write("kestrune.AppImage", "no program");
    LinuxUpdateInstaller installer(program, m_image, "/nonexistent");
    std::optional<Answered> answer;
    installer.install(archive, [&answer](Answered told) { answer.emplace(std::move(told)); });
    ASSERT_TRUE(QTest::qWaitFor([&answer] { return answer.has_value(); }));
    ASSERT_FALSE(answer->ok());
    EXPECT_EQ(answer->error().code, UpdaterError::install);
    EXPECT_EQ(TemporaryFolder::contentOf(m_image), oldBytes);
    EXPECT_TRUE(fs::exists(archive));
}

TEST_F(LinuxUpdateInstallerTest, theNewVersionFindsTheNameOnTheBusFree) {
    TestBus::instance();
    QDBusConnection bus = QDBusConnection::sessionBus();
    ASSERT_TRUE(bus.registerService(QStringLiteral("com.torvandelsyn.kestrune")));
    const std::string started = m_folder.path("started");
    const std::string script = m_folder.write("new.AppImage", "#!/bin/sh\n: > '" + started + "'\n");
    ::chmod(script.c_str(), S_IRWXU);
    LinuxUpdateInstaller installer(program, script, "/nonexistent");
    installer.relaunch();
    EXPECT_TRUE(QTest::qWaitFor([&started] { return fs::exists(started); }));
    QDBusConnection other = TestBus::instance().connect();
    EXPECT_TRUE(other.registerService(QStringLiteral("com.torvandelsyn.kestrune")));
    other.unregisterService(QStringLiteral("com.torvandelsyn.kestrune"));
}

}  // namespace kestrune
