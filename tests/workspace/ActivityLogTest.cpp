#include "workspace/ActivityLog.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/fakes/FakeFileStore.h"

namespace kestrune {

namespace {

constexpr const char* id = "6F9619FF-8B86-4D01-B42D-00CF4FC964FF";

ActivityEntry sample() {
    return {id,
            WallTime{Seconds{978'307'200 + 785'000'000.25}},
            "Moved Gradle Caches to Trash",
            "A “quoted” detail",
            "/home/anna/.local/share/Trash/files/caches",
            false};
}

std::string object(const std::string& members) {
    return "[{" + members + "}]";
}

const std::string complete =
    R"("id":"6F9619FF-8B86-4D01-B42D-00CF4FC964FF","date":1,"title":"t","detail":"d","failed":true)";

}  // namespace

TEST(ActivityLog, theFileLiesAtItsOnePlaceBelowHome) {
    EXPECT_EQ(ActivityLog::path("/home/anna"), "/home/anna/Library/Application Support/Kestrune/activity.json");
}

TEST(ActivityLog, anEntryIsWrittenWithItsKeysInOrder) {
    EXPECT_EQ(ActivityLog::encode({sample()}),
              R"([{"id":"6F9619FF-8B86-4D01-B42D-00CF4FC964FF","date":785000000.25,)"
              R"("title":"Moved Gradle Caches to Trash","detail":"A “quoted” detail",)"
              R"("trashPath":"/home/anna/.local/share/Trash/files/caches","failed":false}])");
}

TEST(ActivityLog, anEntryReadsBackAsItWas) {
    EXPECT_EQ(ActivityLog::decode(ActivityLog::encode({sample()})), (std::vector<ActivityEntry>{sample()}));
}

TEST(ActivityLog, anEntryWithoutATrashLocationHasNoSuchKeyAndReadsBackWithNone) {
    ActivityEntry entry = sample();
    entry.trashPath.reset();
    const std::string bytes = ActivityLog::encode({entry});
    EXPECT_EQ(bytes.find("trashPath"), std::string::npos);
    EXPECT_EQ(ActivityLog::decode(bytes), (std::vector<ActivityEntry>{entry}));
}

TEST(ActivityLog, aTrashLocationThatIsNotTextIsLeftOut) {
    ActivityEntry entry = sample();
    entry.trashPath = "/trash/\xFF";
    entry.title = "Moved \xFF to Trash";
    const auto read = ActivityLog::decode(ActivityLog::encode({entry}));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->at(0).trashPath, std::nullopt);
    EXPECT_EQ(read->at(0).title, "Moved \xEF\xBF\xBD to Trash");
}

TEST(ActivityLog, anEmptyLogIsAnEmptyArray) {
    EXPECT_EQ(ActivityLog::encode({}), "[]");
    EXPECT_EQ(ActivityLog::decode("[]"), std::vector<ActivityEntry>{});
}

TEST(ActivityLog, everyRequiredKeyIsRequired) {
    ASSERT_TRUE(ActivityLog::decode(object(complete)).has_value());
    EXPECT_EQ(ActivityLog::decode(object(R"("date":1,"title":"t","detail":"d","failed":true)")), std::nullopt);
    const std::string withId = R"("id":"6F9619FF-8B86-4D01-B42D-00CF4FC964FF",)";
    EXPECT_EQ(ActivityLog::decode(object(withId + R"("title":"t","detail":"d","failed":true)")), std::nullopt);
    EXPECT_EQ(ActivityLog::decode(object(withId + R"("date":1,"detail":"d","failed":true)")), std::nullopt);
    EXPECT_EQ(ActivityLog::decode(object(withId + R"("date":1,"title":"t","failed":true)")), std::nullopt);
    EXPECT_EQ(ActivityLog::decode(object(withId + R"("date":1,"title":"t","detail":"d")")), std::nullopt);
}

TEST(ActivityLog, everyWrongTypeMakesTheFileUnreadable) {
    for (const char* wrong : {R"("id":7)", R"("id":"not a uuid")", R"("date":"today")", R"("date":null)",
                              R"("title":null)", R"("detail":[])", R"("failed":0)", R"("trashPath":5)"}) {
        EXPECT_EQ(ActivityLog::decode(object(complete + "," + wrong)), std::nullopt) << wrong;
    }
}

TEST(ActivityLog, oneBadEntryMakesTheWholeFileUnreadable) {
    EXPECT_EQ(ActivityLog::decode("[{" + complete + R"(},{"title":"t"}])"), std::nullopt);
    EXPECT_EQ(ActivityLog::decode("[{" + complete + "},7]"), std::nullopt);
}

TEST(ActivityLog, unknownKeysAndANullTrashLocationAreFine) {
    const auto read = ActivityLog::decode(object(complete + R"(,"trashPath":null,"more":{"a":[1,2]})"));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->at(0).trashPath, std::nullopt);
    EXPECT_TRUE(read->at(0).failed);
}

TEST(ActivityLog, anIdentifierIsKeptInUpperCase) {
    const auto read = ActivityLog::decode(
        object(R"("id":"6f9619ff-8b86-4d01-b42d-00cf4fc964ff","date":1,"title":"t","detail":"d","failed":false)"));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->at(0).id, id);
}

TEST(ActivityLog, whatIsNoLogIsNothingAndNeverThrows) {
    for (const char* bytes :
         {"", "null", "{}", "[", "[}", "[{]", "[] []", "\xFF", "[\"\xC3\x28\"]", "[{\"id\":\"\\ud800\"}]"}) {
        EXPECT_EQ(ActivityLog::decode(bytes), std::nullopt) << bytes;
    }
}

TEST(ActivityLog, aDateBeyondTheRangeOfNumbersIsNothing) {
    EXPECT_EQ(ActivityLog::decode(object(complete + R"(,"date":1e999)")), std::nullopt);
}

TEST(ActivityLog, aHostilelyDeepFileIsNothing) {
    EXPECT_EQ(ActivityLog::decode(std::string(100'000, '[')), std::nullopt);
    EXPECT_EQ(ActivityLog::decode(object(complete + R"(,"x":)" + std::string(20, '[') + std::string(20, ']'))),
              std::nullopt);
}

TEST(ActivityLog, bracketsInsideOfTextsAreNoDepth) {
    const auto read = ActivityLog::decode(object(complete + R"(,"title":"\"[[[[[[[[[[[[[[[[[[[[[[")"));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->at(0).title, "\"[[[[[[[[[[[[[[[[[[[[[[");
}

TEST(ActivityLog, aMissingOrUnreadableFileLoadsAsAnEmptyLog) {
    FakeFileStore files;
    EXPECT_TRUE(ActivityLog::load(files, "/home/anna").empty());
    files.files[ActivityLog::path("/home/anna")] = ActivityLog::encode({sample()});
    EXPECT_EQ(ActivityLog::load(files, "/home/anna").size(), 1U);
    files.failsReading = true;
    EXPECT_TRUE(ActivityLog::load(files, "/home/anna").empty());
}

TEST(ActivityLog, aFileWhoseOneEntryLacksFailedLoadsAsAnEmptyLog) {
    FakeFileStore files;
    files.files[ActivityLog::path("/home/anna")] =
        object(R"("id":"6F9619FF-8B86-4D01-B42D-00CF4FC964FF","date":1,"title":"t","detail":"d")");
    EXPECT_TRUE(ActivityLog::load(files, "/home/anna").empty());
}

TEST(ActivityLog, noMoreThanTheNewestHundredAreLoaded) {
    std::vector<ActivityEntry> entries(103, sample());
    entries[0].title = "newest";
    FakeFileStore files;
    ASSERT_TRUE(ActivityLog::save(files, "/home/anna", entries));
    const auto loaded = ActivityLog::load(files, "/home/anna");
    ASSERT_EQ(loaded.size(), 100U);
    EXPECT_EQ(loaded[0].title, "newest");
}

TEST(ActivityEntry, identifiersAreRandomVersionFourInUpperCase) {
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) {
        const std::string made = makeActivityId();
        ASSERT_EQ(made.size(), 36U);
        EXPECT_EQ(made.find_first_not_of("0123456789ABCDEF-"), std::string::npos) << made;
        EXPECT_EQ(made[8], '-');
        EXPECT_EQ(made[13], '-');
        EXPECT_EQ(made[14], '4');
        EXPECT_EQ(made[18], '-');
        EXPECT_NE(std::string("89AB").find(made[19]), std::string::npos) << made;
        EXPECT_EQ(made[23], '-');
        seen.insert(made);
    }
    EXPECT_EQ(seen.size(), 200U);
}

}  // namespace kestrune
