#include "platform/macos/MacTrashRecord.h"

#include <cstdint>

#include "tests/platform/macos/MacPutBackHome.h"

namespace kestrune {
namespace {

class MacTrashRecordTest : public MacPutBackHome {
protected:
    /// Expects that the item in the Trash with this record goes nowhere.
    void expectRefusedRecord(const std::string& text) {
        writeRecord(m_location, text);
        const auto planned = plan(m_location);
        ASSERT_FALSE(planned.ok()) << text << " would go to " << planned.value().originalPath;
        EXPECT_EQ(planned.error().failure, PutBackFailure::noRecord) << text << planned.error().message;
    }

    void expectRefusedPath(const std::string& path) { expectRefusedRecord(recordHead(m_location) + path); }

    const std::string m_location = trash("a");
};

TEST_F(MacTrashRecordTest, aRecordThatNamesAnotherPlaceThanThePlanIsRefused) {
    const PutBackPlan confirmed = goodPlan(m_location);
    giveRecord(m_location, home + "/elsewhere");
    expectNotPutBack(confirmed, PutBackFailure::changed);
    EXPECT_TRUE(fs::exists(m_location));
    EXPECT_FALSE(fs::exists(home + "/elsewhere"));
}

TEST_F(MacTrashRecordTest, withoutARecordNothingGoesBack) {
    fs::create_directory(trashFolder + "/b");
    expectNoPlan(trashFolder + "/b", PutBackFailure::noRecord);
    EXPECT_TRUE(fs::exists(trashFolder + "/b"));
}

TEST_F(MacTrashRecordTest, forgedPlacesAreRefused) {
    for (const std::string& path : {std::string(), std::string("a"), std::string("/"), std::string("/etc/passwd.new"),
                                    home, home + "/", home + "evil/a", home + "/x/../../a", home + "/./a", home + "//a",
                                    home + "/a/", home + "/..", home.substr(1) + "/a", trashFolder, trashFolder + "/b",
                                    trashFolder + "/a/b", home + "/a\0b" + std::string(1, '\0'), "/" + home + "/a"}) {
        expectRefusedPath(path);
    }
    giveRecord(m_location, home + "/.Trashes");
    EXPECT_TRUE(plan(m_location).ok());
}

TEST_F(MacTrashRecordTest, textThatIsNoRecordIsRefused) {
    const std::string head = recordHead(m_location);
    for (const std::string& text : {std::string(), home + "/a", " " + head + home + "/a", head,
                                    head.substr(1) + home + "/a", "-" + head + home + "/a", std::string(3, '\0'),
                                    head + " " + home + "/a", head + home + std::string("/a\0", 3)}) {
        expectRefusedRecord(text);
    }
}

TEST_F(MacTrashRecordTest, aRecordThatWasCopiedFromAnotherItemIsRefused) {
    const std::string other = trash("other");
    expectRefusedRecord(recordOf(other));
    writeRecord(other, recordHead(other) + home + "/other");
    EXPECT_TRUE(plan(other).ok());
}

TEST_F(MacTrashRecordTest, aHugeRecordIsRefusedAndNoneIsWritten) {
    expectRefusedPath(home + "/" + std::string(std::size_t{1} << 20U, 'a'));
    expectRefusedPath(home + "/" + std::string(std::size_t{60} << 10U, 'a') + "/" + std::string(8192, 'b'));
    const MacFolder folder = openMacFolder(AT_FDCWD, m_location);
    ASSERT_TRUE(folder.isOpen());
    EXPECT_FALSE(MacTrashRecord::write(folder.descriptor.get(), folder.status.identity,
                                       "/" + std::string(MacTrashRecord::longest, 'a')));
}

TEST_F(MacTrashRecordTest, theLongestNameThatFitsNoFolderGoesNowhere) {
    giveRecord(m_location, home + "/" + std::string(300, 'a') + "/b");
    expectNoPlan(m_location, PutBackFailure::noFolder, home + "/" + std::string(300, 'a'));
    giveRecord(m_location, home + "/" + std::string(300, 'a'));
    expectNoPlan(m_location, PutBackFailure::system);
}

TEST_F(MacTrashRecordTest, randomBytesNeverLeadOutOfTheHome) {
    std::uint64_t state = 88172645463325252ULL;
    const auto next = [&state] {
        state ^= state << 13U;
        state ^= state >> 7U;
        state ^= state << 17U;
        return state;
    };
    const std::string head = recordHead(m_location);
    const std::string pieces[] = {head, home, "/", "..", ".", "a", " ", std::string(1, '\0'), "\xFF", "/.Trash", "\n"};
    for (int i = 0; i < 2000; ++i) {
        std::string text = next() % 2 == 0 ? head + home : std::string();
        for (std::uint64_t left = next() % 6; left > 0; --left) {
            text += pieces[next() % std::size(pieces)];
        }
        writeRecord(m_location, text);
        const auto planned = plan(m_location);
        if (planned.ok()) {
            const std::string& path = planned.value().originalPath;
            EXPECT_TRUE(path.starts_with(home + "/"));
            EXPECT_EQ(standardizedPath(path), path);
            EXPECT_FALSE(path.starts_with(trashFolder + "/"));
        }
    }
}

}  // namespace
}  // namespace kestrune
