#include "platform/macos/MacInstanceLock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

/// Another start of the program: it takes the lock and holds it until it is told to end.
class OtherStart final {
public:
    explicit OtherStart(const std::string& file) {
        EXPECT_EQ(::pipe(m_toChild.data()), 0);
        EXPECT_EQ(::pipe(m_fromChild.data()), 0);
        m_process = ::fork();
        if (m_process == 0) {
            ::close(m_toChild[1]);
            MacInstanceLock lock(file);
            char byte = lock.takeOrNameHolder() ? 'n' : 'y';
            const bool told = ::write(m_fromChild[1], &byte, 1) == 1;
            ::_exit(told && ::read(m_toChild[0], &byte, 1) == 0 ? 0 : 1);
        }
        char answer = 0;
        EXPECT_EQ(::read(m_fromChild[0], &answer, 1), 1);
        m_hasTheLock = answer == 'y';
    }

    ~OtherStart() { end(); }

    OtherStart(const OtherStart&) = delete;
    OtherStart& operator=(const OtherStart&) = delete;

    void end() {
        if (m_process > 0) {
            ::close(m_toChild[1]);
            ::waitpid(m_process, nullptr, 0);
            m_process = 0;
        }
    }

    [[nodiscard]] pid_t process() const { return m_process; }

    [[nodiscard]] bool hasTheLock() const { return m_hasTheLock; }

private:
    std::array<int, 2> m_toChild{};
    std::array<int, 2> m_fromChild{};
    pid_t m_process = 0;
    bool m_hasTheLock = false;
};

class MacInstanceLockTest : public ::testing::Test {
protected:
    TemporaryFolder m_folder;
    std::string m_file = m_folder.path("Kestrune/instance.lock");
};

TEST_F(MacInstanceLockTest, theFirstStartHasTheLock) {
    MacInstanceLock lock(m_file);
    EXPECT_EQ(lock.takeOrNameHolder(), std::nullopt);
}

TEST_F(MacInstanceLockTest, aSecondStartLearnsWhichProcessHasIt) {
    const OtherStart first(m_file);
    ASSERT_TRUE(first.hasTheLock());
    MacInstanceLock lock(m_file);
    EXPECT_EQ(lock.takeOrNameHolder(), first.process());
}

TEST_F(MacInstanceLockTest, theLockGoesWithItsProcess) {
    OtherStart first(m_file);
    first.end();
    MacInstanceLock lock(m_file);
    EXPECT_EQ(lock.takeOrNameHolder(), std::nullopt);
}

TEST_F(MacInstanceLockTest, theLockGoesWithItsObject) {
    {
        MacInstanceLock lock(m_file);
        ASSERT_EQ(lock.takeOrNameHolder(), std::nullopt);
        EXPECT_FALSE(OtherStart(m_file).hasTheLock());
    }
    EXPECT_TRUE(OtherStart(m_file).hasTheLock());
}

TEST_F(MacInstanceLockTest, onlyTheUserMayReadOrWriteTheFile) {
    MacInstanceLock lock(m_file);
    ASSERT_EQ(lock.takeOrNameHolder(), std::nullopt);

    struct stat status {};

    ASSERT_EQ(::stat(m_file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, S_IRUSR | S_IWUSR);
    ASSERT_EQ(::stat(m_folder.path("Kestrune").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, S_IRWXU);
}

TEST_F(MacInstanceLockTest, whereNoFileCanBeMadeEveryStartIsTheFirst) {
    MacInstanceLock lock(m_folder.path("missing/Kestrune/instance.lock"));
    EXPECT_EQ(lock.takeOrNameHolder(), std::nullopt);
}

TEST_F(MacInstanceLockTest, aLinkInItsPlaceIsNotFollowed) {
    const std::string target = m_folder.path("target");
    ASSERT_EQ(::mkdir(m_folder.path("Kestrune").c_str(), S_IRWXU), 0);
    ASSERT_EQ(::symlink(target.c_str(), m_file.c_str()), 0);
    MacInstanceLock lock(m_file);
    EXPECT_EQ(lock.takeOrNameHolder(), std::nullopt);
    EXPECT_NE(::access(target.c_str(), F_OK), 0);
}

}  // namespace
}  // namespace kestrune
