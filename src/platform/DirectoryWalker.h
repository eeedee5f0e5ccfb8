#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kestrune {

/// What a walk found below one folder.
struct TreeSize {
    bool opened = false;  ///< false: the folder itself could not be listed, everything else is 0
    std::int64_t allocatedBytes =
        0;  ///< what every regular file takes on disk, as in TreeWalk; a file with several links counts per link
    std::int64_t entries = 0;  ///< everything seen below the folder, folders included
    std::int64_t unreadable =
        0;                   ///< folders that could not be listed or left half-way, and entries that could not be read
    bool cancelled = false;  ///< the walk ended early because the caller asked

    bool operator==(const TreeSize&) const = default;
};

/// One thing that a walk measured.
struct WalkedItem {
    std::string path;  ///< below the walked folder: bytes, no leading or trailing "/"
    std::int64_t bytes = 0;
    bool isDirectory = false;

    bool operator==(const WalkedItem&) const = default;
};

/// How far a walk is.
struct WalkProgress {
    std::int64_t entries = 0;
    std::int64_t bytes = 0;
    std::string folder;                ///< one that is being read, below the walked one; empty: the walked one itself
    std::vector<WalkedItem> children;  ///< direct children by what is known of them, largest first, at most childLimit
    std::int64_t otherChildren = 0;    ///< as in TreeWalk
    std::int64_t otherBytes = 0;
};

/// What a walk is asked for. The functions may be empty.
struct WalkRequest {
    std::string folder;               ///< absolute; a link that leads to a folder is followed
    std::int64_t entryLimit = -1;     ///< entries to look at, exactly; negative: all
    std::int64_t childLimit = -1;     ///< direct children to name; negative: all
    std::int64_t largestLimit = 0;    ///< largest files to name; negative: all
    std::function<bool()> cancelled;  ///< true ends the walk. From any of its threads, several at once.
    std::function<bool()> timeIsUp;   ///< likewise; asked after cancelled, and for no entry beyond the entry limit
    /// Told about five times a second, first after a fifth of a second. Never two at once; not from the caller's
    /// thread, perhaps; never after walk() returned.
    std::function<void(const WalkProgress&)> progress;
};

enum class WalkEnd { finished, cancelled, entryLimit, timeLimit };

/// What a walk found. Sizes are what a file takes on disk: st_blocks × 512, on macOS ATTR_FILE_ALLOCSIZE, which counts
/// all of its forks. A file with several links counts per link, and a clone like its original.
struct TreeWalk {
    bool exists = false;               ///< there is such a folder
    bool opened = false;               ///< it could be listed; false: everything below is empty
    WalkEnd end = WalkEnd::finished;   ///< entryLimit only where an entry was left to look at, timeLimit
                                       ///< only where an entry or a folder was
    std::int64_t entries = 0;          ///< looked at, folders included
    std::int64_t files = 0;            ///< regular files among them that were measured
    std::int64_t bytes = 0;            ///< of those files
    std::int64_t links = 0;            ///< symbolic links: seen, not followed
    std::int64_t elsewhere = 0;        ///< entries on other file systems: seen, not entered, not measured
    std::int64_t unreadable = 0;       ///< folders that could not be listed or left half-way, and entries that could
                                       ///< not be read
    std::vector<WalkedItem> children;  ///< direct children that are or hold regular files, largest first, then by path
    std::int64_t otherChildren = 0;    ///< such children beyond childLimit
    std::int64_t otherBytes = 0;       ///< of those
    std::vector<WalkedItem> largestFiles;  ///< largest first, then by path

    bool operator==(const TreeWalk&) const = default;
};

/// Walks a folder without changing anything. Names are bytes; links are seen and never followed; other file systems
/// are entered only where the caller's folder lies. A walk keeps a bounded number of descriptors and a bounded stack
/// however deep the tree is, opens neither devices nor FIFOs, and survives a tree that changes under it: what cannot
/// be read is counted, never an error. It may use threads of its own, which are gone when it returns. Any thread; one
/// walk a thread at a time. A total beyond the range of std::int64_t ends the program.
class DirectoryWalker {
public:
    /// Answers true to end the walk. Asked before the first entry and at least every 64 entries on each thread of the
    /// walk, several at once.
    using Cancelled = std::function<bool()>;

    DirectoryWalker() = default;
    DirectoryWalker(const DirectoryWalker&) = delete;
    DirectoryWalker& operator=(const DirectoryWalker&) = delete;
    virtual ~DirectoryWalker() = default;

    /// Walks request.folder within its limits.
    [[nodiscard]] virtual TreeWalk walk(const WalkRequest& request) = 0;

    /// Measures everything below folder: walk() without limits and without naming anything.
    [[nodiscard]] TreeSize measure(const std::string& folder, const Cancelled& cancelled);
};

}  // namespace kestrune
