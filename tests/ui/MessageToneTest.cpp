#include "ui/MessageTone.h"

#include <gtest/gtest.h>

#include <string_view>

#include "base/Localized.h"

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

TEST(MessageTone, toneIsTheSameInEveryLanguage) {
    setTranslation({[](const char* english) {
                        using namespace std::string_view_literals;
                        return english == "Moved %1 items to Trash. 0 failed."sv    ? "Im Papierkorb: %1. Fehler: 0."
                               : english == "Moved %1 items to Trash. %2 failed."sv ? "Im Papierkorb: %1. Fehler: %2."
                                                                                    : english;
                    },
                    nullptr});
    EXPECT_EQ(toneOf("Im Papierkorb: 3. Fehler: 0."), Tone::success);
    EXPECT_EQ(toneOf("Im Papierkorb: 3. Fehler: 10."), Tone::warning);
    EXPECT_EQ(toneOf("Ordner gemerkt."), Tone::info);
    setTranslation({});
}

TEST(MessageTone, outcomeOfPuttingBackThatFailedIsAWarning) {
    EXPECT_EQ(toneOf("Something else is at ~/Cache now. Rename or move it first, then try again."), Tone::warning);
    EXPECT_EQ(toneOf("Put back Cache. Storage lists it after the next scan."), Tone::info);
}

}  // namespace kestrune
