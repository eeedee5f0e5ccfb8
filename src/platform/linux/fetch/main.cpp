#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "base/WholeNumber.h"
#include "platform/linux/FetchMessages.h"
#include "platform/linux/LinuxStatusFile.h"
#include "platform/linux/LinuxTerminationRequests.h"
#include "platform/linux/fetch/FetchTask.h"

/// Reads one request from its standard input, answers on its standard output and ends; sooner when its standard input
/// closes or the program that started it ends.
namespace {

constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int misused = 2;

constexpr std::size_t statusBytes = 256;
constexpr rlim_t memoryAtMost = rlim_t{512} << 20;

/// What this process has reserved to write to; a build with a sanitizer begins with more than memoryAtMost.
rlim_t reservedMemory() {
    // proc(5): size, resident, shared, text, lib, data, dt, in pages.
    kestrune::LinuxStatusFile status("/proc/self/statm");
    const auto figures = kestrune::splitAtWhiteSpace(status.read(statusBytes).value_or(std::string_view()));
    const auto pages = figures.size() > 5 ? kestrune::wholeNumber<rlim_t>(figures[5]) : std::nullopt;
    return pages.value_or(0) * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

/// What a hostile server can make of this process stays within bounds, and nothing it sent is left in a core file.
void limitYourself() {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    if (reservedMemory() < memoryAtMost) {
        const rlimit memory{memoryAtMost, memoryAtMost};
        ::setrlimit(RLIMIT_DATA, &memory);
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

std::optional<kestrune::FetchRequest> readRequest() {
    std::string line;
    char byte = 0;
    while (static_cast<std::int64_t>(line.size()) < kestrune::FetchMessages::longestRequest) {
        const ssize_t count = ::read(STDIN_FILENO, &byte, 1);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return std::nullopt;
        }
        if (byte == '\n') {
            return kestrune::FetchMessages::request(line);
        }
        line += byte;
    }
    return std::nullopt;
}

bool print(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Ends at once: a name server that does not answer would keep Qt's threads, and with them an ordinary end.
[[noreturn]] void end(std::unique_ptr<kestrune::FetchTask>& task, int status) {
    task.reset();
    ::_exit(status);
}

}  // namespace

int main(int argc, char** argv) {
    limitYourself();
    QCoreApplication::setApplicationName(QStringLiteral("kestrune-fetch"));
    const QCoreApplication loop(argc, argv);
    auto request = readRequest();
    if (!request) {
        return misused;
    }
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    auto task = std::make_unique<kestrune::FetchTask>(std::move(*request));
    kestrune::LinuxTerminationRequests termination;
    termination.start([&task] { end(task, failed); });
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    // Nothing more is ever asked here: this is the end of the other side.
    QObject::connect(&input, &QSocketNotifier::activated, &loop, [&task] { end(task, failed); });
    task->start([&task](const kestrune::FetchAnswer& answer) {
        const bool isPrinted = print(kestrune::FetchMessages::encoded(answer));
        if (!isPrinted || !std::holds_alternative<kestrune::FetchProgress>(answer)) {
            end(task, isPrinted ? succeeded : failed);
        }
    });
    return QCoreApplication::exec();
}
