#include "benchmarks/walk/TreeMaker.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kestrune {

namespace {

/// Hands a system call's result on, or says what failed and ends the program.
int must(int result, const std::string& path) {
    if (result < 0) {
        std::perror(path.c_str());
        std::exit(EXIT_FAILURE);
    }
    return result;
}

std::string below(const TreeMaker::Folder& parent, const std::string& name) {
    return parent.path.empty() ? name : parent.path + '/' + name;
}

LinuxFileDescriptor openFolder(int parent, const std::string& name) {
    return LinuxFileDescriptor(must(::openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), name));
}

LinuxFileDescriptor newFile(const TreeMaker::Folder& parent, const std::string& name) {
    constexpr mode_t mode = 0644;
    return LinuxFileDescriptor(
        must(::openat(parent.descriptor.get(), name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode), name));
}

/// Gives a part of a file its blocks; nothing has to be written for it.
void allocate(int descriptor, const TreeMaker::Piece& piece, const std::string& path) {
    errno = ::posix_fallocate(descriptor, piece.start, piece.length);
    must(errno == 0 ? 0 : -1, path);
}

bool isLarger(const ReportedItem& first, const ReportedItem& second) {
    return first.bytes != second.bytes ? first.bytes > second.bytes : first.path < second.path;
}

void keepLargest(std::vector<ReportedItem>& items, std::size_t count) {
    const auto end = items.begin() + static_cast<std::ptrdiff_t>(std::min(count, items.size()));
    std::partial_sort(items.begin(), end, items.end(), isLarger);
    items.erase(end, items.end());
}

}  // namespace

TreeMaker::TreeMaker(const std::string& root, std::uint64_t seed) : m_random(seed) {
    must(::mkdir(root.c_str(), 0755), root);
    m_root.descriptor = openFolder(AT_FDCWD, root);
}

int TreeMaker::number(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(m_random);
}

std::string TreeMaker::digest(int length) {
    std::string digits;
    for (int i = 0; i < length; ++i) {
        digits += "0123456789abcdef"[m_random() % 16];
    }
    return digits;
}

TreeMaker::Folder TreeMaker::folder(const Folder& parent, const std::string& name) {
    must(::mkdirat(parent.descriptor.get(), name.c_str(), 0755), name);
    ++m_entries;
    ++m_folders;
    return {openFolder(parent.descriptor.get(), name), below(parent, name)};
}

TreeMaker::Folder TreeMaker::sharedFolder(const Folder& parent, const std::string& name) {
    if (::faccessat(parent.descriptor.get(), name.c_str(), F_OK, 0) != 0) {
        return folder(parent, name);
    }
    return {openFolder(parent.descriptor.get(), name), below(parent, name)};
}

void TreeMaker::file(const Folder& parent, const std::string& name) {
    constexpr double longest = 200'000;
    constexpr int filesToOneWithContents = 16;
    const double length = std::min(std::lognormal_distribution<double>(6.5, 1.6)(m_random), longest);
    const LinuxFileDescriptor created = newFile(parent, name);
    if (number(1, filesToOneWithContents) == 1) {
        allocate(created.get(), {0, std::max<std::int64_t>(1, std::llround(length))}, name);
    }
    measured(below(parent, name), created.get());
}

void TreeMaker::sparseFile(const Folder& parent, const std::string& name, std::int64_t length,
                           const std::vector<Piece>& pieces) {
    const LinuxFileDescriptor created = newFile(parent, name);
    must(::ftruncate(created.get(), length), name);
    for (const Piece& piece : pieces) {
        allocate(created.get(), piece, name);
    }
    measured(below(parent, name), created.get());
}

void TreeMaker::symbolicLink(const Folder& parent, const std::string& name, const std::string& target) {
    must(::symlinkat(target.c_str(), parent.descriptor.get(), name.c_str()), name);
    ++m_entries;
    ++m_links;
}

void TreeMaker::hardLink(const Folder& from, const std::string& name, const Folder& to, const std::string& newName) {
    must(::linkat(from.descriptor.get(), name.c_str(), to.descriptor.get(), newName.c_str(), 0), newName);
    const LinuxFileDescriptor linked(
        must(::openat(to.descriptor.get(), newName.c_str(), O_RDONLY | O_CLOEXEC), newName));
    measured(below(to, newName), linked.get());
}

void TreeMaker::fifo(const Folder& parent, const std::string& name) {
    must(::mkfifoat(parent.descriptor.get(), name.c_str(), 0600), name);
    ++m_entries;
}

Report TreeMaker::finish() {
    must(::syncfs(m_root.descriptor.get()), "syncfs");
    std::vector<ReportedItem> children;
    for (const auto& [name, bytes] : m_children) {
        children.push_back({name, bytes});
    }
    const auto count = static_cast<std::int64_t>(children.size());
    keepLargest(children, childrenNamed);
    std::int64_t named = 0;
    for (const ReportedItem& child : children) {
        named += child.bytes;
    }
    keepLargest(m_largest, filesNamed);
    Report report;
    report.add("entries", m_entries);
    report.add("folders", m_folders);
    report.add("files", m_files);
    report.add("links", m_links);
    report.add("bytes", m_bytes);
    report.add("otherChildren", count - static_cast<std::int64_t>(children.size()));
    report.add("otherBytes", m_bytes - named);
    report.add("children", children);
    report.add("largestFiles", m_largest);
    return report;
}

void TreeMaker::measured(const std::string& path, int descriptor) {
    struct stat status {};

    must(::fstat(descriptor, &status), path);
    constexpr std::int64_t blockBytes = 512;
    const std::int64_t bytes = status.st_blocks * blockBytes;
    ++m_entries;
    ++m_files;
    m_bytes += bytes;
    m_children[path.substr(0, path.find('/'))] += bytes;
    m_largest.push_back({path, bytes});
    if (m_largest.size() > filesNamed * 100) {
        keepLargest(m_largest, filesNamed);
    }
}

}  // namespace kestrune
