#include "platform/linux/DesktopEntryFolders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Text.h"
#include "platform/linux/LinuxFileDescriptor.h"

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

// The start of a regular file. A FIFO or a device in its place is not waited for.
std::optional<std::string> readEntry(const std::string& path) {
    const LinuxFileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));

    struct stat status {};

    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string text(std::min(longestEntry, static_cast<std::size_t>(std::max<off_t>(status.st_size, 0))), '\0');
    std::size_t length = 0;
    while (length < text.size()) {
        const ssize_t count = ::read(file.get(), text.data() + length, text.size() - length);
        if (count == 0 || (count < 0 && errno != EINTR)) {
            break;
        }
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(length);
    return text;
}

std::string environmentOr(const char* name, const std::string& otherwise) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

}  // namespace

DesktopEntryFolders::DesktopEntryFolders(std::vector<std::string> folders, std::vector<std::string> languages)
    : m_folders(std::move(folders)), m_languages(std::move(languages)) {
}

std::vector<std::string> DesktopEntryFolders::standard(const std::string& home) {
    std::vector<std::string> folders{environmentOr("XDG_DATA_HOME", home + "/.local/share") + "/applications"};
    for (const std::string& folder : split(environmentOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':')) {
        folders.push_back(folder + "/applications");
    }
    folders.push_back(home + "/.local/share/flatpak/exports/share/applications");
    folders.emplace_back("/var/lib/flatpak/exports/share/applications");
    folders.emplace_back("/var/lib/snapd/desktop/applications");
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
                known.contains(name) ? std::nullopt : readEntry(std::string(folder).append("/").append(name));
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
