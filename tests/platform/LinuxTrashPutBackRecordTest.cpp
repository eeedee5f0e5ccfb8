#include <sys/stat.h>

#include <cstdint>

#include "platform/linux/TrashInfo.h"
#include "tests/platform/PutBackHome.h"

namespace kestrune {
namespace {

class LinuxTrashPutBackRecord : public PutBackHome {
protected:
    /// The plan for the item "a" with this record.
    [[nodiscard]] auto planWithRecord(const std::string& text) const {
        writeRecord(text);
        return plan(trashFolder + "/files/a");
    }

    void expectRefusedRecord(const std::string& text) const {
        const auto planned = planWithRecord(text);
        ASSERT_FALSE(planned.ok()) << text << " would go to " << planned.value().originalPath;
        EXPECT_EQ(planned.error().failure, PutBackFailure::noRecord) << text << planned.error().message;
    }
};

TEST_F(LinuxTrashPutBackRecord, aRecordThatNamesAnotherPlaceThanThePlanIsRefused) {
    const std::string location = trash("a");
    const PutBackPlan confirmed = goodPlan(location);
    writeRecord("[Trash Info]\nPath=" + percentEncoded(home + "/elsewhere") + "\n");
    expectNotPutBack(confirmed, PutBackFailure::changed);
    EXPECT_TRUE(fs::exists(location));
    EXPECT_FALSE(fs::exists(home + "/elsewhere"));
}

TEST_F(LinuxTrashPutBackRecord, withoutARecordNothingGoesBack) {
    const std::string location = trash("a");
    fs::remove(trashFolder + "/info/a.trashinfo");
    expectNoPlan(location, PutBackFailure::noRecord);
    fs::create_directory(trashFolder + "/info/a.trashinfo");
    expectNoPlan(location, PutBackFailure::noRecord);
    fs::remove_all(trashFolder + "/info");
    expectNoPlan(location, PutBackFailure::noRecord);
    EXPECT_TRUE(fs::exists(location));
}

TEST_F(LinuxTrashPutBackRecord, aRecordThatIsALinkOrAFifoIsNotRead) {
    const std::string location = trash("a");
    const std::string record = trashFolder + "/info/a.trashinfo";
    fs::rename(record, beside("record"));
    fs::create_symlink(beside("record"), record);
    expectNoPlan(location, PutBackFailure::noRecord);
    fs::remove(record);
    ASSERT_EQ(::mkfifo(record.c_str(), S_IRWXU), 0);
    expectNoPlan(location, PutBackFailure::noRecord);
}

TEST_F(LinuxTrashPutBackRecord, hostileRecordsNameNoPlace) {
    trash("a");
    const std::string key = "[Trash Info]\nPath=";
    const std::string own = percentEncoded(home);
    expectRefusedRecord("");
    expectRefusedRecord("Path=" + own + "/a\n");
    expectRefusedRecord("\n" + key + own + "/a\n");
    expectRefusedRecord("[Other]\nPath=" + own + "/a\n");
    expectRefusedRecord("[Trash Info]\nDeletionDate=2026-01-01T00:00:00\n");
    expectRefusedRecord(key + own + "/a\nPath=" + own + "/b\n");
    expectRefusedRecord(key + "\n");
    expectRefusedRecord(key + "a\n");
    expectRefusedRecord(key + "/etc/passwd.new\n");
    expectRefusedRecord(key + own + "\n");
    expectRefusedRecord(key + own + "/\n");
    expectRefusedRecord(key + own + "evil/a\n");
    expectRefusedRecord(key + own + "/x/../../a\n");
    expectRefusedRecord(key + own + "/x/%2e%2e/%2E%2E/a\n");
    expectRefusedRecord(key + own + "/./a\n");
    expectRefusedRecord(key + own + "//a\n");
    expectRefusedRecord(key + own + "/a/\n");
    expectRefusedRecord(key + own + "/a%00b\n");
    expectRefusedRecord(key + own + "/a" + std::string(1, '\0') + "b\n");
    expectRefusedRecord(key + own + "/a%\n");
    expectRefusedRecord(key + own + "/a%4\n");
    expectRefusedRecord(key + own + "/a%zz\n");
    expectRefusedRecord(key + own + "/a\r\n");
    expectRefusedRecord(key + own + "/a");
    expectRefusedRecord(key + own + "/.local/share/Trash/files/b\n");
    expectRefusedRecord(key + own + "/.local/share/Trash/info/b.trashinfo\n");
    EXPECT_EQ(contentOf(trashFolder + "/files/a/content"), "mine");
}

TEST_F(LinuxTrashPutBackRecord, aRecordAsOtherProgramsWriteItNamesItsPlace) {
    trash("a");
    const std::string key = "[Trash Info]\nPath=";
    for (const std::string& text :
         {key + home + "/b c\n", key + home + "/b%20c\nDeletionDate=2026-01-01T00:00:00\nX-More=Path=/etc\n",
          "[Trash Info]\nDeletionDate=2026-01-01T00:00:00\nPath=" + home + "/b c\n"}) {
        const auto planned = planWithRecord(text);
        ASSERT_TRUE(planned.ok()) << text;
        EXPECT_EQ(planned.value().originalPath, home + "/b c");
    }
}

TEST_F(LinuxTrashPutBackRecord, aRecordOfMoreThan64KiBIsNotReadToItsEnd) {
    trash("a");
    const std::string text = "[Trash Info]\nPath=" + home + "/a\n";
    EXPECT_TRUE(planWithRecord(text + std::string((64U << 10U) - text.size() - 1, 'x') + "\n").ok());
    expectRefusedRecord(text + std::string((64U << 10U) - text.size(), 'x') + "\n");
    fs::resize_file(trashFolder + "/info/a.trashinfo", std::uintmax_t{1} << 40U);
    expectNoPlan(trashFolder + "/files/a", PutBackFailure::noRecord);
}

TEST_F(LinuxTrashPutBackRecord, aPathLongerThanTheSystemAllowsIsTold) {
    trash("a");
    writeRecord("[Trash Info]\nPath=" + home + "/" + std::string(300, 'n') + "\n");
    const auto planned = plan(trashFolder + "/files/a");
    ASSERT_FALSE(planned.ok());
    EXPECT_EQ(planned.error().message,
              "Couldn't put this item back: Its path is too long. Move it with your file manager instead.");
}

}  // namespace
}  // namespace kestrune
