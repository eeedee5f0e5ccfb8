#include "tests/platform/macos/fake_darwin/FakeProcesses.h"

#include <libproc.h>
#include <sys/sysctl.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "tests/platform/macos/fake_darwin/FakeSysctl.h"

namespace kestrune {

namespace {

std::map<std::int32_t, FakeProcess> processes;
std::function<void()> afterExecutable;

std::string recordOf(std::int32_t pid, const FakeProcess& process) {
    kinfo_proc record{};
    record.kp_proc.p_starttime = {process.startSeconds, process.startMicroseconds};
    record.kp_proc.p_stat = process.isZombie ? SZOMB : SRUN;
    record.kp_proc.p_pid = pid;
    record.kp_eproc.e_ucred.cr_uid = process.user;
    std::string bytes(sizeof record, '\0');
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

// A number without a process is no error: the answer is empty.
void tell(std::int32_t changed) {
    auto& answers = FakeSysctl::state().byNumbers;
    answers[{CTL_KERN, KERN_PROC, KERN_PROC_PID, changed}].clear();
    std::erase_if(answers,
                  [](const auto& answer) { return answer.first.size() == 4 && answer.first[2] == KERN_PROC_UID; });
    for (const auto& [pid, process] : processes) {
        answers[{CTL_KERN, KERN_PROC, KERN_PROC_PID, pid}] = recordOf(pid, process);
        answers[{CTL_KERN, KERN_PROC, KERN_PROC_UID, static_cast<int>(process.user)}] += recordOf(pid, process);
    }
}

}  // namespace

void FakeProcesses::reset() {
    processes.clear();
    afterExecutable = nullptr;
    FakeSysctl::reset();
}

void FakeProcesses::set(std::int32_t pid, FakeProcess process) {
    processes[pid] = std::move(process);
    tell(pid);
}

void FakeProcesses::remove(std::int32_t pid) {
    processes.erase(pid);
    tell(pid);
}

void FakeProcesses::afterNextExecutable(std::function<void()> then) {
    afterExecutable = std::move(then);
}

}  // namespace kestrune

using namespace kestrune;

extern "C" {

int proc_pidpath(int pid, void* buffer, std::uint32_t bufferSize) {
    const auto found = processes.find(pid);
    const std::string path = found == processes.end() ? std::string() : found->second.executable;
    if (path.empty() || path.size() >= bufferSize) {
        return 0;
    }
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    if (const auto then = std::exchange(afterExecutable, nullptr)) {
        then();
    }
    return static_cast<int>(path.size());
}

int proc_pidinfo(int pid, int flavor, std::uint64_t /*argument*/, void* buffer, int bufferSize) {
    const auto found = processes.find(pid);
    proc_vnodepathinfo info{};
    if (flavor != PROC_PIDVNODEPATHINFO || bufferSize != static_cast<int>(sizeof info) || found == processes.end() ||
        found->second.workingDirectory.empty()) {
        return 0;
    }
    const std::string& path = found->second.workingDirectory;
    std::memcpy(info.pvi_cdir.vip_path, path.data(), std::min(path.size(), sizeof info.pvi_cdir.vip_path));
    std::memcpy(buffer, &info, sizeof info);
    return bufferSize;
}

}  // extern "C"
