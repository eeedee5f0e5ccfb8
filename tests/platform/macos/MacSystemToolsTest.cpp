#include "platform/macos/MacSystemTools.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(MacSystemToolsTest, administratorRightsAreAskedForThroughOneQuotedScript) {
    const ToolCommand purge = MacSystemTools(501).purgeMemory();
    EXPECT_EQ(purge, (ToolCommand{"/usr/sbin/purge", {}}));
    EXPECT_EQ(MacSystemTools(501).withAdministratorRights(purge),
              (ToolCommand{"/usr/bin/osascript",
                           {"-e", "do shell script \"'/usr/sbin/purge'\" with administrator privileges"}}));
}

TEST(MacSystemToolsTest, processesAreListedForTheUserAlone) {
    EXPECT_EQ(MacSystemTools(501).userProcesses(),
              (ToolCommand{"/bin/ps", {"-U", "501", "-o", "pid=,rss=,pcpu=,comm="}}));
    EXPECT_EQ(MacSystemTools(501).processOwner(4711), (ToolCommand{"/bin/ps", {"-p", "4711", "-o", "uid=,comm="}}));
}

}  // namespace
}  // namespace kestrune
