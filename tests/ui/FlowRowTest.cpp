#include "ui/FlowRow.h"

#include <gtest/gtest.h>

#include "ui/Button.h"

namespace kestrune {

TEST(FlowRow, controlsThatDoNotFitGoOnFurtherLines) {
    FlowRow row(18, 8);
    auto* first = new Button(Button::Kind::link, QStringLiteral("What's new"));
    auto* second = new Button(Button::Kind::link, QStringLiteral("Download & update help"));
    row.add(first);
    row.add(second);
    row.show();
    const int together = first->sizeHint().width() + 18 + second->sizeHint().width();
    EXPECT_EQ(row.sizeHint().width(), together);
    row.resize(together, row.heightForWidth(together));
    EXPECT_EQ(first->y(), second->y());
    EXPECT_EQ(second->x(), first->width() + 18);
    const int less = together - 1;
    row.resize(less, row.heightForWidth(less));
    EXPECT_EQ(second->y(), first->y() + first->height());
    EXPECT_EQ(second->x(), first->x());
    EXPECT_EQ(row.height(), second->geometry().bottom() + 1 + 8);
    EXPECT_LE(row.minimumSizeHint().width(), less);
}

}  // namespace kestrune
