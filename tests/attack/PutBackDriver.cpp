// One move back from the Trash, as a program of its own: PutBackDriver HOME LOCATION
// Prints "ok PATH", or "failed CODE MESSAGE"; exit status 0 when the move was reported as done, 1 when it failed.
// In the system call trace the move lies between two reads of the descriptor -1 (marks).
#include <cstdlib>
#include <iostream>

#include "platform/linux/LinuxTrash.h"
#include "tests/attack/TraceMark.h"

namespace {

int report(const kestrune::PutBackError& error) {
    std::cout << "failed " << static_cast<int>(error.failure) << ' ' << error.message << '\n';
    return EXIT_FAILURE;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: PutBackDriver HOME LOCATION\n";
        return EXIT_FAILURE + 1;
    }
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    kestrune::LinuxTrash trash(dataHome == nullptr ? std::nullopt : std::optional<std::string>(dataHome));
    const auto planned = trash.planPutBack(arguments[1], arguments[2]);
    if (!planned.ok()) {
        return report(planned.error());
    }
    kestrune::attack::mark();
    const auto result = trash.putBack(arguments[1], planned.value());
    kestrune::attack::mark();
    if (!result.ok()) {
        return report(result.error());
    }
    std::cout << "ok " << result.value() << '\n';
    return EXIT_SUCCESS;
}
