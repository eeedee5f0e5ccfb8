// Hands a listed process's number to another program over and over, before and at every single step of the request to
// end it: PidReuse WORKFOLDER RUNS, as the first process of a new set of processes with a /proc of its own. Exit status
// 0 when no request reached a program it was not meant for.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/LinuxProcessControl.h"
#include "platform/linux/LinuxProcessIdentity.h"
#include "platform/linux/LinuxProcessListing.h"
#include "tests/attack/processes/NumberedChild.h"
#include "tests/attack/processes/SystemCallGate.h"

namespace {

namespace fs = std::filesystem;
using kestrune::LinuxProcessControl;
using kestrune::LinuxProcessListing;
using kestrune::ProcessReference;
namespace LinuxProcessIdentity = kestrune::LinuxProcessIdentity;
using kestrune::attack::NumberedChild;
using kestrune::attack::SystemCallGate;

using Request = std::function<bool(const ProcessReference&)>;

constexpr int beforeTheRequest = 0;
constexpr int never = -1;

struct Tally {
    int reuses = 0;
    int refused = 0;
    int wrong = 0;
};

[[noreturn]] void giveUp(const std::string& reason) {
    std::cerr << reason << '\n';
    std::exit(EXIT_FAILURE);
}

// The kernel counts starts in these.
void waitForTheNextTick() {
    const timespec tick{0, 1'000'000'000 / ::sysconf(_SC_CLK_TCK)};
    ::nanosleep(&tick, nullptr);
}

class Arena final {
public:
    explicit Arena(const std::string& folder) : m_listed(folder + "/listed"), m_another(folder + "/another") {
        fs::create_directories(folder);
        for (const std::string& program : {m_listed, m_another}) {
            fs::copy_file("/bin/cat", program, fs::copy_options::overwrite_existing);
        }
    }

    // Lists a process, asks to end it, and gives its number to another one at the given step of the request. Gives how
    // many steps there were.
    int run(const Request& request, int step, bool isSameProgram, Tally& tally) {
        NumberedChild listed(m_listed);
        const ProcessReference row = rowOf(listed.pid());
        std::optional<NumberedChild> another;
        const auto reuse = [&](int now) {
            if (now == step) {
                listed.end();
                waitForTheNextTick();
                another.emplace(isSameProgram ? m_listed : m_another, row.pid);
                tally.reuses += another->pid() == row.pid ? 1 : 0;
            }
        };
        reuse(beforeTheRequest);
        bool wasSent = false;
        const int steps = SystemCallGate::run([&] { wasSent = request(row); }, reuse);
        if (steps < 0) {
            giveUp("System calls cannot be halted here.");
        }
        if (another) {
            tally.wrong += another->echoes() && another->pid() == row.pid && !wasSent ? 0 : 1;
            tally.refused += wasSent ? 0 : 1;
        } else if (!wasSent || listed.endingSignal() != SIGTERM) {
            giveUp("A request that nobody disturbed did not end its process.");
        }
        return steps;
    }

private:
    ProcessReference rowOf(pid_t pid) {
        const auto processes = m_listing.snapshot().processes;
        const auto row =
            std::find_if(processes.begin(), processes.end(), [pid](const auto& record) { return record.pid == pid; });
        if (row == processes.end() || row->command != m_listed || row->startTime == 0) {
            giveUp("The program to be ended is not listed as what it is.");
        }
        return {row->pid, row->command, row->startTime};
    }

    const std::string m_listed;
    const std::string m_another;
    LinuxProcessListing m_listing;
};

// Looks as carefully, but signals the number.
bool byNumberAlone(const ProcessReference& process) {
    const auto folder = LinuxProcessIdentity::openFolder(process.pid);
    return LinuxProcessIdentity::startTimeOf(folder.get()) == process.startTime &&
           LinuxProcessIdentity::commandOf(folder.get()) == process.command && ::kill(process.pid, SIGTERM) == 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3 || ::getpid() != 1) {
        std::cerr << "usage, as root: unshare --pid --fork --mount-proc PidReuse WORKFOLDER RUNS\n";
        return 2;
    }
    Arena arena(fs::canonical(fs::absolute(arguments[1]).parent_path()).string() + "/arena");
    const long runs = std::strtol(arguments[2], nullptr, 10);

    // A careless program is hit at the last of its steps: the numbers really are handed out again there.
    Tally careless;
    const int carelessSteps = arena.run(byNumberAlone, never, false, careless);
    static_cast<void>(arena.run(byNumberAlone, carelessSteps, false, careless));
    static_cast<void>(arena.run(byNumberAlone, carelessSteps, true, careless));
    if (careless.reuses != 2 || careless.wrong != 2) {
        giveUp("The attack does not even reach a program that goes by numbers.");
    }

    LinuxProcessControl control;
    const Request request = [&control](const ProcessReference& process) { return control.requestTermination(process); };
    Tally undisturbed;
    const int steps = arena.run(request, never, false, undisturbed);
    Tally total;
    for (int step = beforeTheRequest; total.reuses < runs; step = step == steps ? beforeTheRequest : step + 1) {
        const int before = total.reuses;
        static_cast<void>(arena.run(request, step, false, total));
        static_cast<void>(arena.run(request, step, true, total));
        if (total.reuses != before + 2) {
            giveUp("A number could not be handed out again.");
        }
    }
    std::cout << "numbers handed out again: " << total.reuses << ", before the request and at each of its " << steps
              << " steps; refused: " << total.refused << ", wrong: " << total.wrong << '\n';
    return total.wrong == 0 && total.refused == total.reuses ? EXIT_SUCCESS : EXIT_FAILURE;
}
