#pragma once

/// What the stand-in for kqueue(2) leaves to the tests. One test at a time.
namespace FakeEvents {

/// How the end of a process is told from now on.
enum class EndTold {
    whenItEnded,      ///< with waitpid(2) seeing it at the same moment
    never,            ///< as for a process that ended before it was watched: the call fails with ESRCH
    beforeItCanReap,  ///< at once, while waitpid(2) does not see it yet
};

void tellEnd(EndTold how);

/// How many times a queue was waited on since the last call.
int takeWaits();

}  // namespace FakeEvents
