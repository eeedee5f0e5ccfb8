#include "platform/linux/KWinScripts.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

using KWinScripts::Window;

const QString id = QStringLiteral("{813ed965-1023-4af7-8271-b64c238fe207}");

QString reportWith(const QString& fields) {
    return QStringLiteral("[{\"id\":\"%1\",%2}]").arg(id, fields);
}

}  // namespace

TEST(KWinScripts, aReportIsRead) {
    const QString report = reportWith(
        QStringLiteral(R"("pid":827,"names":["org.kde.kate","kate"],"active":true,"regular":true,"native":true)"));
    EXPECT_EQ(KWinScripts::parseReport(report),
              (std::vector<Window>{{id, 827, {"org.kde.kate", "kate"}, true, true, true}}));
    EXPECT_EQ(KWinScripts::parseReport(QStringLiteral("[]")), std::vector<Window>{});
}

TEST(KWinScripts, namesAreListedOnceAndOnlyWhenThereAreAny) {
    const auto windows =
        KWinScripts::parseReport(reportWith(QStringLiteral(R"("pid":1,"names":["","kate","kate",5])")));
    EXPECT_EQ(windows.value().front().names, std::vector<std::string>{"kate"});
}

TEST(KWinScripts, aWindowWithoutAProcessOrAnIdIsLeftOut) {
    for (const char* pid : {"0", "-1", "1.5", "4294967297", "\"7\"", "null"}) {
        EXPECT_EQ(KWinScripts::parseReport(reportWith(QStringLiteral("\"pid\":%1").arg(QLatin1String(pid)))),
                  std::vector<Window>{})
            << pid;
    }
    EXPECT_EQ(KWinScripts::parseReport(QStringLiteral(R"([{"pid":7},{"id":"x","pid":7},7,null,[]])")),
              std::vector<Window>{});
}

TEST(KWinScripts, whatIsNoReportTellsNothing) {
    for (const char* text : {"", "{}", "null", "[", "nonsense"}) {
        EXPECT_EQ(KWinScripts::parseReport(QString::fromLatin1(text)), std::nullopt) << text;
    }
    EXPECT_EQ(
        KWinScripts::parseReport(QStringLiteral("[\"") + QString(1 << 20, QLatin1Char('a')) + QStringLiteral("\"]")),
        std::nullopt);
}

TEST(KWinScripts, ofMoreThanAnyDesktopShowsTheFirstAreRead) {
    const QString window = reportWith(QStringLiteral(R"("pid":7,"names":[%1"z"])"))
                               .mid(1)
                               .chopped(1)
                               .arg(QStringLiteral(R"("a","b","c","d","e","f","g","h",)"));
    const auto windows = KWinScripts::parseReport(QStringLiteral("[") + (window + QLatin1Char(',')).repeated(1'100) +
                                                  window + QLatin1Char(']'));
    ASSERT_EQ(windows.value().size(), KWinScripts::mostWindows);
    EXPECT_EQ(windows.value().front().names, (std::vector<std::string>{"a", "b", "c", "d", "e", "f", "g", "h"}));
}

TEST(KWinScripts, scriptsSpeakOfTheirTargetsOnlyAsQuotedText) {
    const QString script = KWinScripts::listing(QStringLiteral(":1.7"), QStringLiteral("/a\"b"), QStringLiteral("c.d"));
    EXPECT_TRUE(script.endsWith(QStringLiteral(R"(})([":1.7","/a\"b","c.d"]);)") + QLatin1Char('\n')))
        << script.toStdString();
    EXPECT_TRUE(KWinScripts::closing({id}).endsWith(QStringLiteral("})([\"%1\"]);\n").arg(id)));
}

}  // namespace kestrune
