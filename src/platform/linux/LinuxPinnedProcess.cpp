#include "platform/linux/LinuxPinnedProcess.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <string_view>

#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

namespace {

// Whether the process behind descriptor goes by this number in /proc. It does not once its number was given back, nor
// where /proc was mounted for another set of processes than ours and tells of a stranger with the same number.
bool isNumbered(int descriptor, std::int32_t pid) {
    constexpr std::size_t longest = 1024;
    LinuxStatusFile information("/proc/self/fdinfo/" + std::to_string(descriptor));
    const std::string line = std::string("\nPid:\t").append(std::to_string(pid)).append("\n");
    return information.read(longest).value_or(std::string_view{}).find(line) != std::string_view::npos;
}

}  // namespace

std::optional<LinuxPinnedProcess> LinuxPinnedProcess::open(std::int32_t pid) {
    if (pid < 2) {
        return std::nullopt;
    }
    // The descriptor comes first. When the process still has its number after that, the folder is its own.
    LinuxFileDescriptor process(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (!process) {
        return std::nullopt;
    }
    LinuxFileDescriptor folder = LinuxProcessIdentity::openFolder(pid);
    if (!folder || !isNumbered(process.get(), pid)) {
        return std::nullopt;
    }
    return LinuxPinnedProcess(std::move(process), std::move(folder));
}

bool LinuxPinnedProcess::hasEnded() const {
    pollfd waiting{m_process.get(), POLLIN, 0};
    return ::poll(&waiting, 1, 0) > 0;
}

bool LinuxPinnedProcess::startedAt(std::uint64_t startTime) const {
    return !hasEnded() && LinuxProcessIdentity::startTimeOf(folder()) == startTime;
}

bool LinuxPinnedProcess::isSame(std::uint64_t startTime, const std::string& command) const {
    return !hasEnded() && (startTime == 0 || LinuxProcessIdentity::startTimeOf(folder()) == startTime) &&
           LinuxProcessIdentity::commandOf(folder()) == command;
}

std::optional<std::uint32_t> LinuxPinnedProcess::realOwner() const {
    return LinuxProcessIdentity::realOwnerOf(folder());
}

bool LinuxPinnedProcess::send(int signal) const {
    return ::syscall(SYS_pidfd_send_signal, m_process.get(), signal, nullptr, 0) == 0;
}

}  // namespace kestrune
