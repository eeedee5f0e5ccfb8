#include "ui/MessageTone.h"

#include <gtest/gtest.h>

namespace kestrune {

TEST(MessageTone, finishedMoveIsASuccess) {
    EXPECT_EQ(toneOf("Moved 3 items to Trash. 0 failed."), Tone::success);
}

TEST(MessageTone, moveWithAFailureOrStoppedIsAWarning) {
    EXPECT_EQ(toneOf("Moved 2 items to Trash. 1 failed."), Tone::warning);
    EXPECT_EQ(toneOf("Moved 2 items to Trash. 10 failed."), Tone::warning);
    EXPECT_EQ(toneOf("Moved 2 items to Trash. 0 failed. Cleanup stopped; remaining items were kept."), Tone::warning);
}

TEST(MessageTone, refusalIsAWarning) {
    EXPECT_EQ(toneOf("Close these apps before cleaning their files: Xcode"), Tone::warning);
    EXPECT_EQ(toneOf("Finish a new scan before cleaning."), Tone::warning);
    EXPECT_EQ(toneOf("This item is no longer at its recorded Trash location. It may have been restored or emptied."),
              Tone::warning);
}

TEST(MessageTone, lostLogIsADanger) {
    EXPECT_EQ(toneOf("Activity is visible for this session, but couldn't be saved."), Tone::danger);
}

TEST(MessageTone, anythingElseInforms) {
    EXPECT_EQ(
        toneOf("Folders saved. Choose Use Saved Folders after a scan, or Clean the Same Folders Again from the menu."),
        Tone::info);
}

}  // namespace kestrune
