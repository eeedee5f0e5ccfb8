#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kestrune {

/// What a walk found below one folder.
struct TreeSize {
    bool opened = false;  ///< false: the folder itself could not be listed, everything else is 0
    std::int64_t allocatedBytes =
        0;                     ///< st_blocks × 512 of every regular file; a file with several links counts per link
    std::int64_t entries = 0;  ///< everything seen below the folder, folders included
    std::int64_t unreadable =
        0;                   ///< folders that could not be listed or left half-way, and entries that could not be read
    bool cancelled = false;  ///< the walk ended early because the caller asked

    bool operator==(const TreeSize&) const = default;
};

/// Walks a folder without changing anything. Names are bytes; links are seen and never followed; other file systems
/// are entered only where the caller's folder lies. A walk keeps a bounded number of descriptors and a bounded stack
/// however deep the tree is, opens neither devices nor FIFOs, and survives a tree that changes under it: what cannot
/// be read is counted, never an error. Any thread, one walk a thread at a time.
class DirectoryWalker {
public:
    /// Answers true to end the walk. Asked once before every entry, from the walking thread.
    using Cancelled = std::function<bool()>;

    DirectoryWalker() = default;
    DirectoryWalker(const DirectoryWalker&) = delete;
    DirectoryWalker& operator=(const DirectoryWalker&) = delete;
    virtual ~DirectoryWalker() = default;

    /// Measures everything below folder. A total beyond the range of std::int64_t ends the program.
    [[nodiscard]] virtual TreeSize measure(const std::string& folder, const Cancelled& cancelled) = 0;
};

}  // namespace kestrune
