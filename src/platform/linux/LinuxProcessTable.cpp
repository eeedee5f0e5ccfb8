#include "platform/linux/LinuxProcessTable.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <optional>
#include <utility>

#include "base/WholeNumber.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxProcessFigures.h"
#include "platform/linux/LinuxProcessIdentity.h"

namespace kestrune {

namespace {

// Longer than any file that is read here; the kernel gives each of them whole at one read.
constexpr std::size_t bufferBytes = 4096;

class ProcessPath final {
public:
    ProcessPath(std::int32_t pid, const char* file) {
        static_cast<void>(std::snprintf(m_text.data(), m_text.size(), "%d%s", pid, file));
    }

    [[nodiscard]] const char* text() const { return m_text.data(); }

private:
    std::array<char, 32> m_text;
};

LinuxFileDescriptor openProcess(int procFolder, std::int32_t pid) {
    return LinuxFileDescriptor(::openat(procFolder, ProcessPath(pid, "").text(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

// A process's folder belongs to its effective owner.
std::optional<std::uint32_t> effectiveUserOf(int folder, const char* path, int flags) {
    struct stat status {};

    return ::fstatat(folder, path, &status, flags) == 0 ? std::optional(status.st_uid) : std::nullopt;
}

// /proc may belong to another pid namespace than this program.
bool isOfOwnNamespace(int procFolder) {
    std::array<char, 16> buffer;
    const ssize_t length = ::readlinkat(procFolder, "self", buffer.data(), buffer.size());
    return length > 0 &&
           std::string_view(buffer.data(), static_cast<std::size_t>(length)) == std::to_string(::getpid());
}

}  // namespace

std::vector<ProcessRecord> LinuxProcessTable::refresh(int procFolder, bool isThorough) {
    m_ticksSinceBoot =
        LinuxProcessFigures::ticksSinceBoot(contentOf(procFolder, "uptime"), m_ticksPerSecond).value_or(0);
    m_hasClocks = isOfOwnNamespace(procFolder);
    m_active.clear();
    std::vector<Entry> known = std::exchange(m_entries, {});
    auto old = known.begin();
    std::vector<ProcessRecord> records;
    for (Entry& entry : listEntries(procFolder)) {
        old = std::find_if(old, known.end(), [&](const Entry& one) { return one.pid >= entry.pid; });
        const bool isKnown = old != known.end() && old->pid == entry.pid && old->folderInode == entry.folderInode;
        if (isKnown && update(procFolder, *old, isThorough)) {
            entry = std::move(*old);
        } else if (!learn(procFolder, entry)) {
            continue;
        }
        if (entry.isUsers) {
            records.push_back(entry.record);
            if (entry.ran) {
                m_active.push_back(entry.pid);
            }
        }
        m_entries.push_back(std::move(entry));
    }
    return records;
}

std::vector<LinuxProcessTable::Entry> LinuxProcessTable::listEntries(int procFolder) {
    std::vector<Entry> entries;
    const LinuxFileDescriptor folder(::openat(procFolder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    m_reader.begin(folder.get());
    while (const std::optional<DirectoryRecord> record = m_reader.next()) {
        Entry entry;
        entry.pid = wholeNumber<std::int32_t>(record->name).value_or(0);
        if (entry.pid > 0) {
            entry.folderInode = record->inode;
            entries.push_back(std::move(entry));
        }
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& one, const Entry& other) { return one.pid < other.pid; });
    return entries;
}

bool LinuxProcessTable::learn(int procFolder, Entry& entry) {
    // Everything is read through the folder, which stays that of one process whoever gets the pid next.
    const LinuxFileDescriptor folder = openProcess(procFolder, entry.pid);
    if (!folder) {
        return false;
    }
    // Before everything else, so that whatever runs from here on is seen to have run.
    entry.processorClock = processorClockOf(entry.pid);
    const std::optional<std::uint32_t> effectiveUser = effectiveUserOf(folder.get(), "", AT_EMPTY_PATH);
    const std::optional<std::uint32_t> realOwner =
        LinuxProcessIdentity::parseRealOwner(contentOf(folder.get(), "status"));
    if (!effectiveUser || !realOwner) {
        return false;
    }
    entry.effectiveUser = *effectiveUser;
    entry.isUsers = *realOwner == m_user;
    if (!entry.isUsers) {
        return true;
    }
    const std::string_view text = contentOf(folder.get(), "stat");
    std::optional<LinuxProcessIdentity::Stat> stat = LinuxProcessIdentity::parseStat(text);
    if (!stat) {
        return false;
    }
    // Before the executable is read: a process that changes its image in between shows another mark next time.
    entry.imageMark = LinuxProcessFigures::imageMark(text);
    entry.record.pid = entry.pid;
    entry.record.startTime = stat->startTime;
    entry.record.command = LinuxProcessIdentity::executableOf(folder.get()).value_or(std::move(stat->name));
    entry.processorTicks = stat->processorTicks;
    return takeFigures(entry, contentOf(folder.get(), "statm"));
}

bool LinuxProcessTable::update(int procFolder, Entry& entry, bool isThorough) {
    const std::int64_t clock = processorClockOf(entry.pid);
    entry.ran = clock < 0 || clock != entry.processorClock;
    entry.processorClock = clock;
    if (entry.ran && (isThorough || !updateActive(procFolder, entry))) {
        return false;
    }
    if (!entry.isUsers) {
        return true;
    }
    if (isThorough) {
        const LinuxFileDescriptor folder = openProcess(procFolder, entry.pid);
        entry.record.command = LinuxProcessIdentity::executableOf(folder.get()).value_or(entry.record.command);
    }
    return takeFigures(entry, contentOf(procFolder, ProcessPath(entry.pid, "/statm").text()));
}

bool LinuxProcessTable::updateActive(int procFolder, Entry& entry) {
    if (!entry.isUsers) {
        // The real owner of one that shares its effective owner with the user may change unseen.
        return entry.effectiveUser != m_user &&
               effectiveUserOf(procFolder, ProcessPath(entry.pid, "").text(), 0) == entry.effectiveUser;
    }
    const std::string_view text = contentOf(procFolder, ProcessPath(entry.pid, "/stat").text());
    const std::optional<LinuxProcessIdentity::Stat> stat = LinuxProcessIdentity::parseStat(text);
    // A process that takes on another owner hides its image from then on.
    if (!stat || stat->startTime != entry.record.startTime || entry.imageMark == 0 ||
        LinuxProcessFigures::imageMark(text) != entry.imageMark) {
        return false;
    }
    entry.processorTicks = stat->processorTicks;
    return true;
}

bool LinuxProcessTable::takeFigures(Entry& entry, std::string_view statm) const {
    const std::optional<std::int64_t> pages = LinuxProcessFigures::residentPages(statm);
    entry.record.residentKilobytes = pages.value_or(0) * m_kilobytesPerPage;
    entry.record.cpu = LinuxProcessFigures::processorShare(entry.processorTicks, entry.record.startTime,
                                                           m_ticksSinceBoot, m_ticksPerSecond);
    return pages.has_value();
}

std::int64_t LinuxProcessTable::processorClockOf(std::int32_t pid) const {
    constexpr std::int64_t billion = 1'000'000'000;
    clockid_t clock = 0;
    timespec time{};
    if (!m_hasClocks || ::clock_getcpuclockid(pid, &clock) != 0 || ::clock_gettime(clock, &time) != 0) {
        return -1;
    }
    return std::int64_t{time.tv_sec} * billion + time.tv_nsec;
}

std::string_view LinuxProcessTable::contentOf(int folder, const char* path) {
    const LinuxFileDescriptor file(::openat(folder, path, O_RDONLY | O_CLOEXEC));
    m_buffer.resize(bufferBytes);
    const ssize_t length = file ? ::read(file.get(), m_buffer.data(), m_buffer.size()) : -1;
    return std::string_view(m_buffer).substr(0, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
}

}  // namespace kestrune
