#include "platform/linux/LinuxTrashError.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kestrune {
namespace {

TEST(LinuxTrashError, aSystemWithoutTheCallsOfASafeMoveIsNotToBeTriedAgain) {
    for (const int missing : {ENOSYS, ENOTSUP, EOPNOTSUPP}) {
        EXPECT_EQ(trashSystemError(missing).message,
                  "Couldn't move this item to the Trash: This system can't move items safely. Move it with your file "
                  "manager instead.");
    }
}

TEST(LinuxTrashError, aCauseWithoutAdviceOfItsOwnIsNamed) {
    EXPECT_EQ(trashSystemError(ETIMEDOUT).message,
              "Couldn't move this item to the Trash: Connection timed out. Try again.");
}

}  // namespace
}  // namespace kestrune
