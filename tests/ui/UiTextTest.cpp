#include "ui/UiText.h"

#include <gtest/gtest.h>

#include <QTextDocument>

namespace kestrune {

namespace {

// What a tooltip with this text shows: QLabel decides the same way (Qt::AutoText).
QString readInToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

}  // namespace

TEST(UiText, bytesThatAreNoTextStayVisible) {
    EXPECT_EQ(shown("a\xFF"
                    "b"),
              QStringLiteral("a\uFFFDb"));
}

TEST(UiText, foreignNameKeepsToOneLine) {
    EXPECT_EQ(shown("a\nb\tc"), QStringLiteral("a␊b␉c"));
    EXPECT_EQ(shown("a\u2028b"), QStringLiteral("a\uFFFDb"));
}

TEST(UiText, foreignNameKeepsItsWritingDirection) {
    EXPECT_EQ(shown("a\u202Egpj.exe"), QStringLiteral("a\uFFFDgpj.exe"));
}

TEST(UiText, ampersandIsDoubledWhereItWouldMarkAMnemonic) {
    EXPECT_EQ(withoutMnemonic(QStringLiteral("Build & Package")), QStringLiteral("Build && Package"));
}

TEST(UiText, everyTextShowsAsItselfInATooltip) {
    for (const char* name :
         {"Firefox", "R&D", "R&amp;D", "<b>x</b>", "a <b>x</b> & c", "x&lt;b", "<3", "a < b > c", "<!DOCTYPE html>",
          "R&D\n/opt/<b>x</b>/run", "<b>x</b>\n/opt/R&D/run", "two  blanks <i>"}) {
        EXPECT_EQ(readInToolTip(asToolTip(QString::fromUtf8(name))).toStdString(), name);
    }
}

TEST(UiText, argumentsAreTakenAsTheyStand) {
    EXPECT_EQ(translated("Show in Finder: %1", {QStringLiteral("%1 & ü")}), QStringLiteral("Show in Finder: %1 & ü"));
}

TEST(UiText, aCountChoosesItsForm) {
    EXPECT_EQ(translatedCount("%1 item", "%1 items", 1), QStringLiteral("1 item"));
    EXPECT_EQ(translatedCount("%1 item of %2", "%1 items of %2", 2, {QStringLiteral("2"), QStringLiteral("9")}),
              QStringLiteral("2 items of 9"));
}

}  // namespace kestrune
