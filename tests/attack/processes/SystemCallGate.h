#pragma once

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune::attack {

/// Runs an action in a thread that halts before each of its system calls of certain kinds, so that the caller can
/// change the world at exactly that point.
class SystemCallGate final {
public:
    /// Runs action; atGate gets the number of each halted call, from 1 on, and the call goes on when it returns. Gives
    /// how many calls halted; -1 when the kernel does not let calls be halted.
    static int run(const std::function<void()>& action, const std::function<void(int)>& atGate) {
        std::atomic<int> listenerNumber{notYet};
        std::thread worker([&] {
            const int listener = installGate();
            listenerNumber = listener;
            listenerNumber.notify_one();
            if (listener >= 0) {
                action();
            }
        });
        listenerNumber.wait(notYet);
        const LinuxFileDescriptor listener(listenerNumber.load());
        const int halted = listener ? serve(listener.get(), atGate) : -1;
        worker.join();
        return halted;
    }

private:
    static constexpr int notYet = -2;

    // Whatever can be part of looking at a process or of signalling it.
    static constexpr std::array gated{SYS_pidfd_open, SYS_openat, SYS_read,   SYS_pread64,          SYS_readlinkat,
                                      SYS_newfstatat, SYS_kill,   SYS_tgkill, SYS_pidfd_send_signal};

    static int installGate() {
        std::vector<sock_filter> program{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
        for (const long call : gated) {
            program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 0, 1));
            program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
        }
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
        const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
        if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
            return -1;
        }
        return static_cast<int>(
            ::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &filter));
    }

    static int serve(int listener, const std::function<void(int)>& atGate) {
        int halted = 0;
        while (true) {
            pollfd waiting{listener, POLLIN, 0};
            // The listener hangs up when the thread has ended.
            if (::poll(&waiting, 1, -1) < 0 || (waiting.revents & POLLIN) == 0) {
                return halted;
            }
            seccomp_notif call{};
            if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &call) != 0) {
                continue;
            }
            atGate(++halted);
            seccomp_notif_resp answer{};
            answer.id = call.id;
            answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
            static_cast<void>(::ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer));
        }
    }
};

}  // namespace kestrune::attack
