#include "platform/macos/MacDirectoryWalker.h"

#include <sys/resource.h>

#include <cerrno>
#include <utility>

#include "platform/ParallelWalk.h"
#include "platform/macos/MacWalkSystem.h"

namespace kestrune {

namespace {

/// How many descriptors the program may still open, judged by the number of the one opened last.
std::uint64_t freeDescriptors(int last) {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return 0;
    }
    const auto used = static_cast<std::uint64_t>(last) + 1;
    const std::uint64_t most = limit.rlim_cur;
    return most > used ? most - used : 0;
}

}  // namespace

TreeWalk MacDirectoryWalker::walk(const WalkRequest& request) {
    const MacQuietThread quiet;
    MacFileDescriptor root = MacWalkSystem::openRoot(request.folder);
    TreeWalk unopened;
    unopened.exists = root || (errno != ENOENT && errno != ENOTDIR);
    const auto system = root ? MacWalkSystem::around(root.get()) : std::nullopt;
    if (!system) {
        return unopened;
    }
    const std::size_t workers = walkWorkersFor(freeDescriptors(root.get()));
    return ParallelWalk<MacWalkSystem>(request, *system).run(std::move(root), workers);
}

}  // namespace kestrune
