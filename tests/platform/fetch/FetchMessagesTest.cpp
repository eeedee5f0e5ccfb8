#include "platform/linux/FetchMessages.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kestrune {

TEST(FetchMessages, requestsReadBackWhateverBytesTheirPathsHold) {
    const FetchRequest request{FetchRequest::Verb::archive, "https://e/a\"\n",     "/tmp/\xFF\n%41", "key=", "sig=",
                               std::int64_t{1} << 40,       "/home/a\xC3\xA4/\xFE"};
    const std::string line = FetchMessages::encoded(request);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(FetchMessages::request(line), request);
    FetchRequest feed;
    feed.url = "https://e/feed";
    EXPECT_EQ(FetchMessages::request(FetchMessages::encoded(feed)), feed);
}

TEST(FetchMessages, answersReadBack) {
    const FeedItem item{"2", "2.0", "linux", "12", "a\nb \"c\" \xF0\x9F\xA7\xB9", "https://e/a", "7", "sig"};
    for (const FetchAnswer& answer :
         {FetchAnswer(FetchProgress{7}), FetchAnswer(std::vector<FeedItem>{}),
          FetchAnswer(std::vector{item, FeedItem{}}), FetchAnswer(FetchedArchive{"/tmp/\xFF a"}),
          FetchAnswer(FetchFailure{FetchReason::tooSlow, "host"})}) {
        const std::string line = FetchMessages::encoded(answer);
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        EXPECT_EQ(FetchMessages::answer(line), answer) << line;
    }
}

TEST(FetchMessages, linesThatAreNoMessageAreNone) {
    for (const char* const line :
         {"", "\n", "[]", "7", "{}", "{\"items\":7}", "{\"bytes\":\"7\"}", "{\"failure\":\"x\"}",
          "{\"failure\":7,\"path\":\"/x\"}", "{\"path\":7}", "{\"bytes\":7", "\xFF"}) {
        EXPECT_EQ(FetchMessages::answer(line), std::nullopt) << line;
        EXPECT_EQ(FetchMessages::request(line), std::nullopt) << line;
    }
    EXPECT_EQ(FetchMessages::request("{\"verb\":\"delete\"}"), std::nullopt);
    EXPECT_EQ(FetchMessages::answer(std::string(100'000, '[')), std::nullopt);
}

TEST(FetchFailure, everyReasonHasANameOfItsOwnAndASentence) {
    for (int number = 0; number <= static_cast<int>(FetchReason::fetcherSilent); ++number) {
        const auto reason = static_cast<FetchReason>(number);
        EXPECT_EQ(fetchReason(nameOf(reason)), reason);
        const UpdaterError error = describe({reason, "detail"});
        EXPECT_GE(error.code, UpdaterError::network);
        EXPECT_TRUE(error.description.ends_with('.')) << error.description;
        EXPECT_EQ(error.description.find("%1"), std::string::npos) << error.description;
    }
    EXPECT_EQ(fetchReason("nothing"), std::nullopt);
}

TEST(FetchFailure, noTwoReasonsHaveTheSameSentence) {
    std::set<std::string> sentences;
    for (int number = 0; number <= static_cast<int>(FetchReason::fetcherSilent); ++number) {
        const std::string sentence = describe({static_cast<FetchReason>(number), "x"}).description;
        EXPECT_TRUE(sentences.insert(sentence).second) << sentence;
    }
}

}  // namespace kestrune
