#include "platform/macos/MacProcessIdentity.h"

#include <libproc.h>
#include <sys/sysctl.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

namespace kestrune::MacProcessIdentity {

namespace {

std::uint64_t startTimeIn(const kinfo_proc& record) {
    constexpr std::uint64_t microsecondsPerSecond = 1'000'000;
    const auto seconds = static_cast<std::uint64_t>(record.kp_proc.p_starttime.tv_sec);
    return seconds * microsecondsPerSecond + static_cast<std::uint64_t>(record.kp_proc.p_starttime.tv_usec);
}

bool hasEnded(const kinfo_proc& record) {
    return record.kp_proc.p_stat == SZOMB;
}

// sysctl(3): a number without a process is no error, but an empty answer.
std::optional<kinfo_proc> recordOf(std::int32_t pid) {
    std::array<int, 4> name{CTL_KERN, KERN_PROC, KERN_PROC_PID, pid};
    kinfo_proc record{};
    std::size_t length = sizeof record;
    const int result = ::sysctl(name.data(), static_cast<u_int>(name.size()), &record, &length, nullptr, 0);
    const bool isWhole = result == 0 && length == sizeof record && record.kp_proc.p_pid == pid;
    return isWhole && !hasEnded(record) ? std::optional(record) : std::nullopt;
}

std::string executableOf(std::int32_t pid) {
    std::array<char, PROC_PIDPATHINFO_MAXSIZE> path{};
    const int length = ::proc_pidpath(pid, path.data(), static_cast<std::uint32_t>(path.size()));
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

// Processes may start between the question for the length and the one for the records.
std::vector<kinfo_proc> recordsOfUser(std::uint32_t user) {
    constexpr std::size_t spare = 64;
    constexpr int mostTries = 4;
    std::array<int, 4> name{CTL_KERN, KERN_PROC, KERN_PROC_UID, static_cast<int>(user)};
    for (int i = 0; i < mostTries; ++i) {
        std::size_t length = 0;
        if (::sysctl(name.data(), static_cast<u_int>(name.size()), nullptr, &length, nullptr, 0) != 0) {
            return {};
        }
        std::vector<kinfo_proc> records(length / sizeof(kinfo_proc) + spare);
        length = records.size() * sizeof(kinfo_proc);
        if (::sysctl(name.data(), static_cast<u_int>(name.size()), records.data(), &length, nullptr, 0) == 0) {
            records.resize(length / sizeof(kinfo_proc));
            return records;
        }
        if (errno != ENOMEM) {
            return {};
        }
    }
    return {};
}

}  // namespace

std::optional<Identity> of(std::int32_t pid) {
    const std::optional<kinfo_proc> before = recordOf(pid);
    if (!before) {
        return std::nullopt;
    }
    Identity identity{startTimeIn(*before), before->kp_eproc.e_ucred.cr_uid, executableOf(pid)};
    const std::optional<kinfo_proc> after = recordOf(pid);
    return after && startTimeIn(*after) == identity.startTime ? std::optional(std::move(identity)) : std::nullopt;
}

std::unordered_map<std::int32_t, std::uint64_t> startTimesOfUser(std::uint32_t user) {
    std::unordered_map<std::int32_t, std::uint64_t> startTimes;
    for (const kinfo_proc& record : recordsOfUser(user)) {
        startTimes.emplace(record.kp_proc.p_pid, startTimeIn(record));
    }
    return startTimes;
}

std::optional<std::string> workingDirectoryOf(std::int32_t pid) {
    proc_vnodepathinfo info{};
    const int size = static_cast<int>(sizeof info);
    if (::proc_pidinfo(pid, PROC_PIDVNODEPATHINFO, 0, &info, size) != size) {
        return std::nullopt;
    }
    const char* const path = info.pvi_cdir.vip_path;
    std::string folder(path, ::strnlen(path, sizeof info.pvi_cdir.vip_path));
    return folder.empty() ? std::nullopt : std::optional(std::move(folder));
}

}  // namespace kestrune::MacProcessIdentity
