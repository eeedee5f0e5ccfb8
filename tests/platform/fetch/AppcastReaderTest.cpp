#include "platform/linux/fetch/AppcastReader.h"

#include <gtest/gtest.h>

#include <QByteArray>

namespace kestrune {

namespace {

const QByteArray start =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
    "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel>"
    "<title>Kestrune</title>";
const QByteArray end = "</channel></rss>\n";

const QByteArray item = R"(<item>
    <title>Version 2.2.0</title>
    <sparkle:version>2.2.0</sparkle:version>
    <sparkle:shortVersionString> 2.2 </sparkle:shortVersionString>
    <sparkle:minimumSystemVersion>12</sparkle:minimumSystemVersion>
    <description><![CDATA[<h2>New</h2><ul><li>Faster &amp; smaller</li><li>Safer</li></ul>]]></description>
    <enclosure url="https://example.org/kestrune.AppImage" length="123" type="application/octet-stream"
        sparkle:os="linux" sparkle:edSignature="c2ln"/>
</item>)";

Result<std::vector<FeedItem>, FetchReason> readItems(const QByteArray& items) {
    return AppcastReader::read(start + items + end);
}

FetchReason reasonOf(const QByteArray& feed) {
    const auto items = AppcastReader::read(feed);
    EXPECT_FALSE(items.ok()) << feed.left(200).constData();
    return items.ok() ? FetchReason::fetcherMissing : items.error();
}

}  // namespace

TEST(AppcastReader, readsAnItemWithAllItSays) {
    const auto items = readItems(item);
    ASSERT_TRUE(items.ok());
    const FeedItem expected{.version = "2.2.0",
                            .shortVersion = "2.2",
                            .os = "linux",
                            .minimumSystemVersion = "12",
                            .notes = "New\n\n\xE2\x80\xA2 Faster & smaller\n\xE2\x80\xA2 Safer",
                            .url = "https://example.org/kestrune.AppImage",
                            .length = "123",
                            .signature = "c2ln"};
    EXPECT_EQ(items.value(), std::vector{expected});
}

TEST(AppcastReader, attributesOfTheEnclosureCountWhereThereIsNoElement) {
    const auto items = readItems(
        "<item><enclosure url=\"https://e/a\" sparkle:version=\"7\" sparkle:shortVersionString=\"1.7\" length=\"1\"/>"
        "</item><item><enclosure url=\"https://e/b\" sparkle:version=\"7\"/>"
        "<sparkle:version>8</sparkle:version></item>");
    ASSERT_TRUE(items.ok());
    ASSERT_EQ(items.value().size(), 2U);
    EXPECT_EQ(items.value()[0].version, "7");
    EXPECT_EQ(items.value()[0].shortVersion, "1.7");
    EXPECT_EQ(items.value()[1].version, "8");
}

TEST(AppcastReader, aFeedWithoutItemsIsOne) {
    const auto items = readItems("");
    ASSERT_TRUE(items.ok());
    EXPECT_TRUE(items.value().empty());
}

TEST(AppcastReader, theFirstEnclosureCountsAndNoneOfADelta) {
    const auto items = readItems(
        "<item><sparkle:deltas><enclosure url=\"https://e/delta\"/></sparkle:deltas>"
        "<enclosure url=\"https://e/first\"/><enclosure url=\"https://e/second\"/></item>");
    ASSERT_TRUE(items.ok());
    ASSERT_EQ(items.value().size(), 1U);
    EXPECT_EQ(items.value()[0].url, "https://e/first");
}

TEST(AppcastReader, versionsOfAChannelOfTheirOwnAreLeftOut) {
    const auto items = readItems("<item><sparkle:channel>beta</sparkle:channel></item>" + item);
    ASSERT_TRUE(items.ok());
    EXPECT_EQ(items.value().size(), 1U);
}

TEST(AppcastReader, namesOutsideOfTheNamespaceMeanNothing) {
    const auto items = readItems("<item><version>9</version><x:version xmlns:x=\"urn:x\">9</x:version></item>");
    ASSERT_TRUE(items.ok());
    ASSERT_EQ(items.value().size(), 1U);
    EXPECT_EQ(items.value()[0], FeedItem{});
}

TEST(AppcastReader, aDocumentTypeDeclarationIsAnErrorWhateverItHolds) {
    const QByteArray rest = "<rss><channel/></rss>";
    EXPECT_EQ(reasonOf("<!DOCTYPE rss>" + rest), FetchReason::feedDeclaresTypes);
    EXPECT_EQ(reasonOf("<!DOCTYPE rss SYSTEM \"file:///etc/passwd\">" + rest), FetchReason::feedDeclaresTypes);
    QByteArray bomb = "<!DOCTYPE rss [<!ENTITY a0 \"ha\">";
    for (int level = 1; level < 30; ++level) {
        const QByteArray below = "&a" + QByteArray::number(level - 1) + ";";
        bomb += "<!ENTITY a" + QByteArray::number(level) + " \"" + below + below + "\">";
    }
    EXPECT_EQ(reasonOf(bomb + "]><rss><channel>&a29;</channel></rss>"), FetchReason::feedDeclaresTypes);
}

TEST(AppcastReader, thirtyTwoLevelsAreReadAndNotOneMore) {
    const auto nested = [](int levels) {
        return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
    };
    EXPECT_TRUE(readItems(nested(30)).ok());
    EXPECT_EQ(reasonOf(start + nested(31) + end), FetchReason::feedTooDeep);
    EXPECT_EQ(reasonOf(QByteArray("<a>").repeated(100'000)), FetchReason::feedTooDeep);
}

TEST(AppcastReader, aThousandItemsAreReadAndNotOneMore) {
    const auto items = readItems(QByteArray("<item/>").repeated(1000));
    ASSERT_TRUE(items.ok());
    EXPECT_EQ(items.value().size(), 1000U);
    EXPECT_EQ(reasonOf(start + QByteArray("<item/>").repeated(1001) + end), FetchReason::feedTooManyItems);
    EXPECT_EQ(reasonOf(start + QByteArray("<item><sparkle:channel>b</sparkle:channel></item>").repeated(1001) + end),
              FetchReason::feedTooManyItems);
}

TEST(AppcastReader, aMebibyteIsReadAndNotOneByteMore) {
    const QByteArray around = start + "<!---->" + end;
    const QByteArray filled =
        start + "<!--" + QByteArray(AppcastReader::longestFeed - around.size(), ' ') + "-->" + end;
    EXPECT_TRUE(AppcastReader::read(filled).ok());
    EXPECT_EQ(reasonOf(filled + "\n"), FetchReason::tooLarge);
}

TEST(AppcastReader, whatIsCutOrIsNoFeedIsToldAsSuch) {
    const QByteArray feed = start + item + end;
    for (qsizetype length = 0; length < feed.size() - 1; ++length) {
        EXPECT_EQ(reasonOf(feed.first(length)), FetchReason::notFeed);
    }
    for (const char* const other :
         {"{}", "<html><body/></html>", "<feed xmlns=\"http://www.w3.org/2005/Atom\"/>", "<x:rss xmlns:x=\"urn:x\"/>",
          "<rss>&undeclared;</rss>", "\xFF\xFE", "<rss>\xFF</rss>"}) {
        EXPECT_EQ(reasonOf(other), FetchReason::notFeed) << other;
    }
}

TEST(AppcastReader, notesAreTakenAsTheyStandWhereTheFeedSaysThatTheyArePlain) {
    const auto items = readItems("<item><description sparkle:format=\"plain-text\">a &lt;b> c</description></item>");
    ASSERT_TRUE(items.ok());
    EXPECT_EQ(items.value()[0].notes, "a <b> c");
}

TEST(AppcastReader, markupInsideOfNotesLeavesItsText) {
    const auto items = readItems("<item><description>one <b>two</b> three</description></item>");
    ASSERT_TRUE(items.ok());
    EXPECT_EQ(items.value()[0].notes, "one two three");
}

}  // namespace kestrune
