#include "platform/macos/MacAttributeBuffer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/platform/macos/fake_darwin/FakeAttributes.h"

namespace kestrune {
namespace {

constexpr std::uint32_t regularFile = 1;
constexpr std::uint32_t directory = 2;
constexpr std::uint32_t symbolicLink = 5;
constexpr std::uint32_t fifo = 7;

using fake_darwin::Entry;
using fake_darwin::packed;

Entry entryOf(std::uint32_t type, const std::string& name, std::int64_t bytes = 0) {
    Entry entry;
    entry.name = name;
    entry.type = type;
    entry.allocatedBytes = bytes;
    return entry;
}

struct Read {
    std::string name;
    WalkEntry entry;

    bool operator==(const Read&) const = default;
};

/// Reads a copy that ends where its memory ends, so that a sanitizer sees every byte beyond it that is touched.
std::pair<bool, std::vector<Read>> readFrom(const std::string& bytes, std::size_t count) {
    const auto copy = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), copy.get());
    std::vector<MacDirectoryEntry> entries;
    const bool isWhole = readAttributes(std::string_view(copy.get(), bytes.size()), count, entries);
    std::vector<Read> read;
    for (const MacDirectoryEntry& entry : entries) {
        read.push_back({entry.name, entry.entry});
    }
    return {isWhole, read};
}

WalkEntry readAlone(const std::string& bytes) {
    const auto [isWhole, read] = readFrom(bytes, 1);
    EXPECT_TRUE(isWhole);
    return read.size() == 1 ? read[0].entry : WalkEntry{WalkEntryKind::other, -1};
}

/// The packed entry with a 32-bit field overwritten.
std::string withField(std::string bytes, std::size_t offset, std::uint32_t value) {
    std::memcpy(bytes.data() + offset, &value, sizeof value);
    return bytes;
}

constexpr std::size_t commonSet = 4;
constexpr std::size_t volumeSet = 8;
constexpr std::size_t folderSet = 12;
constexpr std::size_t fileSet = 16;
constexpr std::size_t forkSet = 20;
constexpr std::size_t nameOffset = 24;
constexpr std::size_t nameLength = 28;

TEST(MacAttributeBuffer, entriesAreReadOneAfterTheOther) {
    const std::string bytes = packed(entryOf(regularFile, "a", 4096)) + packed(entryOf(directory, "\xFF\xFE")) +
                              packed(entryOf(symbolicLink, "link")) + packed(entryOf(fifo, "pipe"));
    const std::vector<Read> expected = {{"a", {WalkEntryKind::file, 4096}},
                                        {"\xFF\xFE", {WalkEntryKind::folder, 0}},
                                        {"link", {WalkEntryKind::link, 0}},
                                        {"pipe", {WalkEntryKind::other, 0}}};
    EXPECT_EQ(std::pair(true, expected), readFrom(bytes, 4));
    EXPECT_EQ(2U, readFrom(bytes, 2).second.size());
}

TEST(MacAttributeBuffer, selfAndParentAreLeftOut) {
    const std::string bytes =
        packed(entryOf(directory, ".")) + packed(entryOf(directory, "..")) + packed(entryOf(directory, "..."));
    EXPECT_EQ((std::vector<Read>{{"...", {WalkEntryKind::folder, 0}}}), readFrom(bytes, 3).second);
}

TEST(MacAttributeBuffer, attributesThatWereNotReturnedTakeNoPlace) {
    for (const bool tellsFlags : {false, true}) {
        Entry file = entryOf(regularFile, "name", std::int64_t{5} << 32);
        file.tellsFlags = tellsFlags;
        EXPECT_EQ((WalkEntry{WalkEntryKind::file, std::int64_t{5} << 32}), readAlone(packed(file)));
        Entry folder = entryOf(directory, "name");
        folder.tellsFlags = tellsFlags;
        folder.tellsMountStatus = false;
        EXPECT_EQ((WalkEntry{WalkEntryKind::folder, 0}), readAlone(packed(folder)));
    }
}

TEST(MacAttributeBuffer, aFileWithoutASizeIsUnreadableAndSoIsOneOfNegativeSize) {
    Entry file = entryOf(regularFile, "name");
    file.tellsAllocatedBytes = false;
    EXPECT_EQ(WalkEntryKind::unreadable, readAlone(packed(file)).kind);
    EXPECT_EQ(WalkEntryKind::unreadable, readAlone(packed(entryOf(regularFile, "name", -1))).kind);
}

TEST(MacAttributeBuffer, anEntryWithAnErrorIsWhatItsKindSaysUnlessItIsToBeMeasured) {
    Entry entry = entryOf(regularFile, "name", 512);
    entry.error = 13;
    EXPECT_EQ(WalkEntryKind::unreadable, readAlone(packed(entry)).kind);
    entry.type = symbolicLink;
    EXPECT_EQ(WalkEntryKind::link, readAlone(packed(entry)).kind);
    entry.type = directory;  // opening it will show
    EXPECT_EQ(WalkEntryKind::folder, readAlone(packed(entry)).kind);
    entry.tellsType = false;
    EXPECT_EQ(WalkEntryKind::unreadable, readAlone(packed(entry)).kind);
}

TEST(MacAttributeBuffer, mountPointsAndTriggersAreElsewhere) {
    Entry folder = entryOf(directory, "Volumes");
    folder.mountStatus = DIR_MNTSTATUS_MNTPOINT;
    EXPECT_EQ(WalkEntryKind::elsewhere, readAlone(packed(folder)).kind);
    folder.mountStatus = DIR_MNTSTATUS_TRIGGER;
    EXPECT_EQ(WalkEntryKind::elsewhere, readAlone(packed(folder)).kind);
}

TEST(MacAttributeBuffer, aFolderInTheCloudIsUnreadableAndAFileTakesWhatItTakesHere) {
    Entry entry = entryOf(directory, "cloud", 512);
    entry.flags = SF_DATALESS;
    EXPECT_EQ(WalkEntryKind::unreadable, readAlone(packed(entry)).kind);
    entry.type = regularFile;
    EXPECT_EQ((WalkEntry{WalkEntryKind::file, 512}), readAlone(packed(entry)));
}

TEST(MacAttributeBuffer, aNameThatIsNoneMakesTheEntryUnreadable) {
    for (const std::string& name : {std::string(), std::string("a/b"), std::string("/"), std::string(1, '\0')}) {
        EXPECT_EQ(WalkEntryKind::unreadable, readAlone(packed(entryOf(directory, name))).kind);
    }
}

TEST(MacAttributeBuffer, aNameReferenceThatLeadsOutsideTheEntryIsNotFollowed) {
    const std::string bytes = packed(entryOf(directory, "name"));
    const auto size = static_cast<std::uint32_t>(bytes.size());
    for (const std::uint32_t offset : {size, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFE7U}) {
        EXPECT_EQ(WalkEntryKind::unreadable, readAlone(withField(bytes, nameOffset, offset)).kind) << offset;
    }
    for (const std::uint32_t length : {0U, 1U, 4U, size, 0xFFFFFFFFU}) {  // 4: the NUL is cut off
        EXPECT_EQ(WalkEntryKind::unreadable, readAlone(withField(bytes, nameLength, length)).kind) << length;
    }
}

TEST(MacAttributeBuffer, attributesNobodyAskedForMakeTheEntryUnreadable) {
    const std::string bytes = packed(entryOf(regularFile, "name", 512));
    for (const std::size_t set : {commonSet, volumeSet, folderSet, fileSet, forkSet}) {
        std::uint32_t returned = 0;
        std::memcpy(&returned, bytes.data() + set, sizeof returned);
        EXPECT_EQ(WalkEntryKind::unreadable, readAlone(withField(bytes, set, returned | 2U)).kind) << set;
    }
}

TEST(MacAttributeBuffer, aLengthThatLeavesTheBufferEndsTheReadingAndKeepsWhatCameBefore) {
    const std::string first = packed(entryOf(regularFile, "a", 512));
    const std::string second = packed(entryOf(regularFile, "b", 512));
    for (const std::uint32_t length : {0U, 3U, static_cast<std::uint32_t>(second.size()) + 1, 0xFFFFFFFFU}) {
        const auto [isWhole, read] = readFrom(first + withField(second, 0, length), 2);
        EXPECT_FALSE(isWhole) << length;
        EXPECT_EQ((std::vector<Read>{{"a", {WalkEntryKind::file, 512}}}), read);
    }
    EXPECT_FALSE(readFrom(first, 2).first);
    EXPECT_FALSE(readFrom("", 1).first);
    EXPECT_TRUE(readFrom("", 0).first);
}

TEST(MacAttributeBuffer, anEntryThatIsCutShortIsUnreadable) {
    const std::string bytes = packed(entryOf(regularFile, "name", 512));
    for (std::uint32_t length = 4; length < nameLength; ++length) {
        EXPECT_EQ(WalkEntryKind::unreadable, readAlone(withField(bytes, 0, length).substr(0, length)).kind) << length;
    }
}

/// A hundred thousand buffers that a broken file system could hand over: what is read stays inside, every name ends,
/// and there are never more entries than were announced.
TEST(MacAttributeBuffer, noBufferLeadsOutsideItself) {
    constexpr int rounds = 100000;
    std::mt19937 random(20);
    const auto number = [&random](std::uint32_t least, std::uint32_t most) {
        return std::uniform_int_distribution<std::uint32_t>(least, most)(random);
    };
    static constexpr std::uint32_t edges[] = {0, 1, 4, 7, 8, 23, 24, 0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFF};
    std::size_t intact = 0;
    for (int round = 0; round < rounds; ++round) {
        std::string bytes;
        const std::uint32_t count = number(1, 4);
        for (std::uint32_t entry = 0; entry < count; ++entry) {
            Entry made = entryOf(number(0, 8), std::string(number(0, 20), 'n'), number(0, 9999));
            made.error = number(0, 3) == 0 ? 5 : 0;
            made.tellsType = number(0, 5) > 0;
            made.tellsFlags = number(0, 2) > 0;
            bytes += packed(made);
        }
        for (std::uint32_t mutation = number(0, 3); mutation > 0; --mutation) {
            const std::size_t place = number(0, static_cast<std::uint32_t>(bytes.size() / 4 - 1)) * std::size_t{4};
            const bool isEdge = number(0, 1) == 0;
            bytes = withField(bytes, place, isEdge ? edges[number(0, std::size(edges) - 1)] : number(0, 64));
        }
        bytes.resize(number(0, 9) == 0 ? number(0, static_cast<std::uint32_t>(bytes.size())) : bytes.size());
        const auto [isWhole, read] = readFrom(bytes, count);
        intact += isWhole ? 1 : 0;
        ASSERT_LE(read.size(), count);
        for (const Read& entry : read) {
            ASSERT_LE(entry.name.size(), bytes.size());
            ASSERT_GE(entry.entry.bytes, 0);
        }
    }
    EXPECT_GT(intact, std::size_t{rounds / 10});
    EXPECT_LT(intact, std::size_t{rounds});
}

}  // namespace
}  // namespace kestrune
