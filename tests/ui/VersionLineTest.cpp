#include "ui/VersionLine.h"

#include <gtest/gtest.h>

#include "tests/ui/SeenPieces.h"

namespace kestrune {

TEST(VersionLine, statusGoesBelowTheVersionWhereThereIsNoRoomBesideIt) {
    const QString version = QStringLiteral("Kestrune 2.1.0");
    const QString status = QStringLiteral("Update couldn't finish: the server did not answer. Try again later.");
    VersionLine line(version);
    line.setStatus(status);
    line.resize(500, line.heightForWidth(500));
    line.show();
    EXPECT_EQ(namedIn(line, status)->y(), namedIn(line, version)->y());
    EXPECT_GT(namedIn(line, status)->x(), namedIn(line, version)->width());
    line.resize(200, line.heightForWidth(200));
    EXPECT_GE(namedIn(line, status)->y(), namedIn(line, version)->height());
    EXPECT_EQ(namedIn(line, status)->width(), 200);
    EXPECT_EQ(line.height(), namedIn(line, status)->geometry().bottom() + 1);
}

}  // namespace kestrune
