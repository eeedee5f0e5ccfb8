#include "platform/linux/LinuxProcessIdentity.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

#include "base/WholeNumber.h"
#include "platform/linux/LinuxDirectoryReader.h"

namespace kestrune::LinuxProcessIdentity {

namespace {

// Longer than "stat" and "status" ever are, but for the group list at the end of the latter.
constexpr std::size_t longestFile = 8192;

std::optional<std::string> contentOf(int folder, const char* name) {
    const LinuxFileDescriptor file(::openat(folder, name, O_RDONLY | O_CLOEXEC));
    if (!file) {
        return std::nullopt;
    }
    std::array<char, longestFile> buffer;
    std::size_t length = 0;
    while (length < buffer.size()) {
        const ssize_t count = ::read(file.get(), buffer.data() + length, buffer.size() - length);
        if (count == 0) {
            break;
        }
        if (count > 0) {
            length += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return std::string(buffer.data(), length);
}

// Where a link in a process's folder leads. The kernel marks what was deleted meanwhile; the path is what it was.
std::optional<std::string> linkTarget(int folder, const char* name) {
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = ::readlinkat(folder, name, buffer.data(), buffer.size());
    if (length <= 0) {
        return std::nullopt;
    }
    constexpr std::string_view mark = " (deleted)";
    std::string_view path(buffer.data(), static_cast<std::size_t>(length));
    if (path.size() > mark.size() && path.ends_with(mark)) {
        path.remove_suffix(mark.size());
    }
    return std::string(path);
}

// What the other threads of a process run whose first one has ended, and shows nothing any more.
std::optional<std::string> executableOfThreads(int folder) {
    const LinuxFileDescriptor threads(::openat(folder, "task", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!threads) {
        return std::nullopt;
    }
    LinuxDirectoryReader reader(LinuxDirectoryReader::smallBuffer);
    reader.begin(threads.get());
    while (const std::optional<DirectoryRecord> thread = reader.next()) {
        const std::string link = std::string(thread->name) + "/exe";
        if (std::optional<std::string> path = linkTarget(threads.get(), link.c_str())) {
            return path;
        }
    }
    return std::nullopt;
}

// The field up to the next blank, which is taken off text together with it.
std::string_view takeField(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const std::string_view field = text.substr(0, text.find_first_of(" \t\n"));
    text.remove_prefix(field.size());
    return field;
}

}  // namespace

bool hasEnded(const Stat& stat) {
    return stat.state == 'X' || (stat.state == 'Z' && stat.threads <= 1);
}

std::optional<Stat> parseStat(std::string_view text) {
    // The name stands between the first "(" and the last ")": it may hold either itself.
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    Stat stat;
    stat.name = text.substr(open + 1, close - open - 1);
    text.remove_prefix(close + 1);
    // As proc(5) counts them: the state is field 3, the resident pages are field 24.
    constexpr std::size_t firstField = 3;
    std::array<std::string_view, 25> fields;
    for (std::size_t i = firstField; i < fields.size(); ++i) {
        fields[i] = takeField(text);
    }
    const auto userTicks = wholeNumber<std::uint64_t>(fields[14]);
    const auto systemTicks = wholeNumber<std::uint64_t>(fields[15]);
    const auto startTime = wholeNumber<std::uint64_t>(fields[22]);
    const auto residentPages = wholeNumber<std::int64_t>(fields[24]);
    if (fields[firstField].size() != 1 || !userTicks || !systemTicks || !startTime || !residentPages) {
        return std::nullopt;
    }
    stat.state = fields[firstField].front();
    stat.threads = wholeNumber<std::int32_t>(fields[20]).value_or(1);
    stat.parent = wholeNumber<std::int32_t>(fields[4]).value_or(0);
    stat.processorTicks = *userTicks + *systemTicks;
    stat.startTime = *startTime;
    stat.residentPages = *residentPages;
    return stat;
}

std::optional<std::uint32_t> parseRealOwner(std::string_view status) {
    // The name in the first line cannot pretend to be this one: the kernel writes its line ends as "\n".
    constexpr std::string_view key = "\nUid:";
    const std::size_t start = status.find(key);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    status.remove_prefix(start + key.size());
    return wholeNumber<std::uint32_t>(takeField(status));
}

LinuxFileDescriptor openFolder(std::int32_t pid, const std::string& procRoot) {
    const std::string path = std::string(procRoot).append("/").append(std::to_string(pid));
    return LinuxFileDescriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

std::optional<Stat> statOf(int folder) {
    const std::optional<std::string> text = contentOf(folder, "stat");
    return text ? parseStat(*text) : std::nullopt;
}

std::optional<std::uint64_t> startTimeOf(int folder) {
    const std::optional<Stat> stat = statOf(folder);
    return stat ? std::optional(stat->startTime) : std::nullopt;
}

std::optional<std::uint32_t> realOwnerOf(int folder) {
    const std::optional<std::string> text = contentOf(folder, "status");
    return text ? parseRealOwner(*text) : std::nullopt;
}

std::optional<std::string> executableOf(int folder) {
    if (std::optional<std::string> path = linkTarget(folder, "exe")) {
        return path;
    }
    const std::optional<Stat> stat = statOf(folder);
    return stat && stat->state == 'Z' && !hasEnded(*stat) ? executableOfThreads(folder) : std::nullopt;
}

std::optional<std::string> workingDirectoryOf(int folder) {
    return linkTarget(folder, "cwd");
}

std::optional<std::string> commandOf(int folder) {
    if (std::optional<std::string> executable = executableOf(folder)) {
        return executable;
    }
    std::optional<Stat> stat = statOf(folder);
    return stat ? std::optional(std::move(stat->name)) : std::nullopt;
}

}  // namespace kestrune::LinuxProcessIdentity
