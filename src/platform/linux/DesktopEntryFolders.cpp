#include "platform/linux/DesktopEntryFolders.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/LinuxRegularFile.h"
#include "platform/linux/LinuxXdgFolders.h"

namespace kestrune {

namespace {

constexpr std::string_view suffix = ".desktop";
constexpr std::size_t mostFiles = 4'096;
constexpr std::size_t longestEntry = 1U << 18U;
constexpr std::size_t mostBytes = 1U << 24U;

// Names of the .desktop files in a folder, sorted; empty when it cannot be read.
std::vector<std::string> entryNamesIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end;
         !error && entry != end && names.size() < mostFiles; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        if (name.size() > suffix.size() && name.ends_with(suffix)) {
            names.push_back(std::move(name));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::int64_t changeTime(const struct stat& status) {
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

std::int64_t changeTime(const std::string& folder) {
    struct stat status {};

    return ::stat(folder.c_str(), &status) == 0 ? changeTime(status) : 0;
}

}  // namespace

DesktopEntryFolders::DesktopEntryFolders(std::vector<std::string> folders, std::vector<std::string> languages)
    : m_folders(std::move(folders)), m_languages(std::move(languages)) {
}

std::vector<std::string> DesktopEntryFolders::standard(const std::string& home) {
    std::vector<std::string> folders = LinuxXdgFolders::data(home);
    for (std::string& folder : folders) {
        folder += "/applications";
    }
    return folders;
}

bool DesktopEntryFolders::refresh() {
    std::vector<std::int64_t> times;
    for (const std::string& folder : m_folders) {
        times.push_back(changeTime(folder));
    }
    if (times == m_times) {
        return false;
    }
    m_times = std::move(times);
    m_entries.clear();
    const Files before = std::exchange(m_files, {});
    std::size_t bytesLeft = mostBytes;
    std::set<std::string> known;
    for (const std::string& folder : m_folders) {
        for (const std::string& name : entryNamesIn(folder)) {
            const std::string path = std::string(folder).append("/").append(name);
            const bool isWanted = m_files.size() < mostFiles && !known.contains(name);
            const std::optional<Stamp> stamp = isWanted ? stampOf(path) : std::nullopt;
            if (!stamp) {
                continue;
            }
            const auto old = before.find(path);
            const bool isUnchanged = old != before.end() && old->second.stamp == *stamp;
            std::optional<File> file = isUnchanged ? old->second : read(path, *stamp, bytesLeft);
            if (!file) {
                continue;
            }
            known.insert(name);
            if (file->entry) {
                file->entry->id = name.substr(0, name.size() - suffix.size());
                m_entries.push_back(*file->entry);
            }
            m_files.emplace(path, std::move(*file));
        }
    }
    return true;
}

std::optional<DesktopEntryFolders::Stamp> DesktopEntryFolders::stampOf(const std::string& path) {
    struct stat status {};

    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return Stamp{status.st_dev, status.st_ino, changeTime(status), status.st_size};
}

std::optional<DesktopEntryFolders::File> DesktopEntryFolders::read(const std::string& path, const Stamp& stamp,
                                                                   std::size_t& bytesLeft) const {
    const std::optional<std::string> text =
        bytesLeft > 0 ? readRegularFile(path, std::min(bytesLeft, longestEntry)) : std::nullopt;
    if (!text) {
        return std::nullopt;
    }
    bytesLeft -= text->size();
    return File{stamp, parseDesktopEntry(*text, m_languages)};
}

}  // namespace kestrune
