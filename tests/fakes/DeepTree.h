#pragma once

#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "platform/DirectoryWalker.h"
#include "platform/linux/LinuxFileDescriptor.h"

/// Trees deeper than any path, and the look at how many descriptors a walk through them takes.
namespace kestrune {

constexpr int descriptorsAtMost = 64;

inline int openDescriptors() {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir("/proc/self/fd"), ::closedir);
    int count = -3;  // ".", ".." and the listing's own
    while (::readdir(listing.get()) != nullptr) {
        ++count;
    }
    return count;
}

/// A predicate that never cancels and remembers the most descriptors it saw, looking every so often. Several threads
/// may ask at once; one of them looks.
struct DescriptorWatch {
    const int before = openDescriptors();
    int most = 0;
    std::atomic<int> asked{0};
    std::mutex looking;

    DirectoryWalker::Cancelled every(int interval) {
        return [this, interval] {
            const std::unique_lock guard(looking, std::try_to_lock);
            if (asked++ % interval == 0 && guard.owns_lock()) {
                most = std::max(most, openDescriptors() - before);
            }
            return false;
        };
    }
};

/// Makes a chain of folders called "d", each with what `furnish` puts into it.
inline void makeChain(const std::string& folder, int depth,
                      const std::function<void(int descriptor, int level)>& furnish) {
    LinuxFileDescriptor here(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int level = 0; level < depth; ++level) {
        furnish(here.get(), level);
        ASSERT_EQ(0, ::mkdirat(here.get(), "d", 0755));
        here = LinuxFileDescriptor(::openat(here.get(), "d", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        ASSERT_TRUE(here);
    }
}

inline void makeFileAt(int folder, const char* name, std::size_t bytes) {
    const LinuxFileDescriptor file(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    const std::string content(bytes, 'x');
    ASSERT_EQ(static_cast<ssize_t>(bytes), ::write(file.get(), content.data(), bytes));
}

/// Puts a folder before the chain's own folder and one after it: whatever order the file system lists them in, one of
/// the two waits while the chain is walked down.
inline void makeTeeth(int folder, int level) {
    ASSERT_EQ(0, ::mkdirat(folder, "before", 0755));
    ASSERT_TRUE(level == 0 || ::mkdirat(folder, "../after", 0755) == 0);
}

inline void makeTeethWithFiles(int folder, int level) {
    makeTeeth(folder, level);
    makeFileAt(folder, "before/file", 100);
    if (level > 0) {
        makeFileAt(folder, "../after/file", 100);
    }
}

}  // namespace kestrune
