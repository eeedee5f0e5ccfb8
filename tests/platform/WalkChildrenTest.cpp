#include "platform/WalkChildren.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrune {
namespace {

TreeWalk finished(WalkChildren& children) {
    TreeWalk found;
    children.finish(found);
    return found;
}

TEST(WalkChildren, aFolderOfEmptyFilesIsNamedAndOneWithoutFilesIsNot) {
    WalkChildren children(-1);
    children.enter("files")->addFiles(0);
    children.enter("none").reset();
    EXPECT_EQ((std::vector<WalkedItem>{{"files", 0, true}}), finished(children).children);
}

TEST(WalkChildren, aChildIsCompleteWhenItsLastHolderLetsGo) {
    WalkChildren children(1);
    auto one = children.enter("one");
    auto same = one;
    one->addFiles(10);
    one.reset();
    children.enter("two")->addFiles(15);
    same->addFiles(10);
    same.reset();
    const TreeWalk found = finished(children);
    EXPECT_EQ((std::vector<WalkedItem>{{"one", 20, true}}), found.children);
    EXPECT_EQ(1, found.otherChildren);
    EXPECT_EQ(15, found.otherBytes);
}

TEST(WalkChildren, aReportKnowsWhatIsBeingMeasuredAndWhatIsLeftOut) {
    WalkChildren children(2);
    WalkChildFiles files{{{"small", 1, false}, {"large", 100, false}}, 3, 2};
    children.add(files);
    EXPECT_TRUE(files.files.empty());
    EXPECT_EQ(1, children.leastBytes());
    const auto folder = children.enter("folder");
    folder->addFiles(50);
    WalkProgress progress;
    children.report(progress);
    EXPECT_EQ((std::vector<WalkedItem>{{"large", 100, false}, {"folder", 50, true}}), progress.children);
    EXPECT_EQ(4, progress.otherChildren);
    EXPECT_EQ(3, progress.otherBytes);
}

}  // namespace
}  // namespace kestrune
