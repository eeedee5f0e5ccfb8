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
constexpr std::size_t mostFiles = 10'000;
constexpr std::size_t longestEntry = 1U << 18U;

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

std::int64_t changeTime(const std::string& folder) {
    struct stat status {};

    if (::stat(folder.c_str(), &status) != 0) {
        return 0;
    }
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
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
    std::set<std::string> known;
    for (const std::string& folder : m_folders) {
        for (const std::string& name : entryNamesIn(folder)) {
            const std::optional<std::string> text =
                known.contains(name) ? std::nullopt
                                     : readRegularFile(std::string(folder).append("/").append(name), longestEntry);
            if (!text) {
                continue;
            }
            known.insert(name);
            if (std::optional<DesktopEntry> entry = parseDesktopEntry(*text, m_languages)) {
                entry->id = name.substr(0, name.size() - suffix.size());
                m_entries.push_back(std::move(*entry));
            }
        }
    }
    return true;
}

}  // namespace kestrune
