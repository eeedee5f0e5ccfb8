#include "platform/linux/LinuxDirectoryWalker.h"

#include <sys/resource.h>

#include <cerrno>
#include <utility>

#include "platform/ParallelWalk.h"
#include "platform/linux/LinuxWalkSystem.h"

namespace kestrune {

namespace {

/// How many descriptors the program may still open. What is opened gets the lowest free number, so that the one of the
/// root tells how many are in use.
std::uint64_t freeDescriptors(const LinuxFileDescriptor& root) {
    rlimit limit{};
    const auto used = static_cast<rlim_t>(root.get()) + 1;
    return ::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur <= used ? 0 : limit.rlim_cur - used;
}

}  // namespace

TreeWalk LinuxDirectoryWalker::walk(const WalkRequest& request) {
    LinuxFileDescriptor root = openFolderToWalk(request.folder);
    TreeWalk unopened;
    unopened.exists = root || (errno != ENOENT && errno != ENOTDIR);
    const auto system = root ? LinuxWalkSystem::around(root.get()) : std::nullopt;
    if (!system) {
        return unopened;
    }
    const std::size_t workers = walkWorkersFor(freeDescriptors(root));
    return ParallelWalk<LinuxWalkSystem>(request, *system).run(std::move(root), workers);
}

}  // namespace kestrune
