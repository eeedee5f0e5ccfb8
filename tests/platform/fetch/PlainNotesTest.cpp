#include "platform/linux/fetch/PlainNotes.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrune {

namespace {

std::string textOf(const char* html) {
    return PlainNotes::fromHtml(QString::fromUtf8(html)).toStdString();
}

}  // namespace

TEST(PlainNotes, paragraphsAndItemsHaveLinesOfTheirOwn) {
    EXPECT_EQ(textOf("<h1>Two</h1>\n <p>It is\n   faster.</p><p>And<br>safer.</p><ul><li>a<li>b</ul>end"),
              "Two\n\nIt is faster.\n\nAnd\nsafer.\n\n\u2022 a\n\u2022 b\n\nend");
}

TEST(PlainNotes, scriptsStylesAndCommentsAreLeftOut) {
    EXPECT_EQ(textOf("a<script>alert('<p>')</script>b<STYLE>p{}</style >c<!-- <p> -->d"), "abcd");
    EXPECT_EQ(textOf("a<script>never ends"), "a");
    EXPECT_EQ(textOf("a<!-- never ends"), "a");
    EXPECT_EQ(textOf("a<b never ends"), "a");
}

TEST(PlainNotes, referencesBecomeCharactersAndUnknownOnesStay) {
    EXPECT_EQ(textOf("&lt;b&gt; &amp;amp; &#65;&#x42; &hellip; &mdash;"), "<b> &amp; AB \u2026 \u2014");
    EXPECT_EQ(textOf("&nothing; &; &#; &#xD800; &#x110000; AT&T & you"),
              "&nothing; &; &#; &#xD800; &#x110000; AT&T & you");
}

TEST(PlainNotes, aLessThanSignThatBeginsNoTagStays) {
    EXPECT_EQ(textOf("1 < 2 <3 and <"), "1 < 2 <3 and <");
}

TEST(PlainNotes, whatDoesNotShowOrTurnsTheDirectionIsLeftOut) {
    EXPECT_EQ(textOf("a\u202Eb\u200Fc\u0007d\uFEFFe"), "abcde");
    EXPECT_EQ(PlainNotes::plain(QString(QChar(0xD800)) + u'x').toStdString(), "\uFFFDx");
}

TEST(PlainNotes, longNotesAreCut) {
    const QString cut = PlainNotes::plain(QString(PlainNotes::longest + 1, u'x'));
    EXPECT_EQ(cut.size(), PlainNotes::longest + 1);
    EXPECT_TRUE(cut.endsWith(u'\u2026'));
    EXPECT_EQ(PlainNotes::plain(QString(PlainNotes::longest, u'x')).size(), PlainNotes::longest);
    EXPECT_EQ(PlainNotes::fromHtml(QString(1 << 20, u'<')).size(), PlainNotes::longest + 1);
}

}  // namespace kestrune
