#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/walk/Report.h"
#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// Makes a tree entry by entry and keeps count of what it makes: the manifest that every walk is held to. The same
/// seed and the same calls make the same tree. Ends the program when the file system refuses something.
class TreeMaker final {
public:
    /// A folder that was made, open for what goes into it.
    struct Folder {
        LinuxFileDescriptor descriptor;
        std::string path;  ///< below the root; empty for the root itself
    };

    /// Makes the root, which must not exist.
    explicit TreeMaker(const std::string& root, std::uint64_t seed = 1);

    [[nodiscard]] Folder& root() { return m_root; }

    [[nodiscard]] std::int64_t entries() const { return m_entries; }

    /// A whole number from least to most.
    [[nodiscard]] int number(int least, int most);

    /// Hexadecimal digits.
    [[nodiscard]] std::string digest(int length);

    Folder folder(const Folder& parent, const std::string& name);

    /// The folder with this name, which is made when there is none yet.
    Folder sharedFolder(const Folder& parent, const std::string& name);

    /// One file in sixteen is as long as those in source trees and caches are: half of them below 700 bytes, 200,000 at
    /// most. The others are empty: a walk reads no contents, and blocks are what making and removing a tree costs.
    void file(const Folder& parent, const std::string& name);

    /// A file of length bytes of which each piece has its blocks.
    struct Piece {
        std::int64_t start = 0;
        std::int64_t length = 0;
    };

    void sparseFile(const Folder& parent, const std::string& name, std::int64_t length,
                    const std::vector<Piece>& pieces);

    void symbolicLink(const Folder& parent, const std::string& name, const std::string& target);
    void hardLink(const Folder& from, const std::string& name, const Folder& to, const std::string& newName);
    void fifo(const Folder& parent, const std::string& name);

    /// Puts everything on the disk and tells what was made.
    [[nodiscard]] Report finish();

private:
    void measured(const std::string& path, int descriptor);

    std::mt19937_64 m_random;
    Folder m_root;
    std::int64_t m_entries = 0;
    std::int64_t m_folders = 0;
    std::int64_t m_files = 0;
    std::int64_t m_links = 0;
    std::int64_t m_bytes = 0;
    std::map<std::string, std::int64_t> m_children;  ///< bytes of the root's children that are or hold files
    std::vector<ReportedItem> m_largest;             ///< every file that was among the largest so far
};

}  // namespace kestrune
