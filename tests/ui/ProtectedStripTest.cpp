#include "ui/ProtectedStrip.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/ui/SeenPieces.h"
#include "ui/Button.h"

namespace kestrune {

namespace {

std::set<std::string> names(int count) {
    std::set<std::string> result;
    for (int i = 0; i < count; ++i) {
        result.insert("name" + std::to_string(1'000 + i));
    }
    return result;
}

}  // namespace

TEST(ProtectedStrip, ofManyNamesTheFirstAreShownAndHowManyMoreThereAre) {
    ProtectedStrip strip;
    strip.setNames(names(200));
    EXPECT_EQ(strip.accessibleDescription(), QString());
    const int before = strip.heightForWidth(800);
    strip.setNames(names(1'000));
    EXPECT_EQ(strip.findChildren<Button*>().size(), 200);
    EXPECT_EQ(strip.accessibleDescription(), QStringLiteral("and 800 more"));
    EXPECT_GT(strip.heightForWidth(800), before);
    strip.setNames(names(201));
    EXPECT_EQ(strip.accessibleDescription(), QStringLiteral("and 1 more"));
    strip.resize(800, strip.heightForWidth(800));
    strip.show();
    EXPECT_NE(namedIn(strip, QStringLiteral("Remove protection: name1199")), nullptr);
    EXPECT_EQ(namedIn(strip, QStringLiteral("Remove protection: name1200")), nullptr);
}

TEST(ProtectedStrip, aNameThatWasLeftOutComesWhenThereIsRoom) {
    ProtectedStrip strip;
    strip.show();
    auto all = names(201);
    strip.setNames(all);
    all.erase("name1000");
    strip.setNames(all);
    EXPECT_EQ(strip.accessibleDescription(), QString());
    EXPECT_NE(namedIn(strip, QStringLiteral("Remove protection: name1200")), nullptr);
}

}  // namespace kestrune
