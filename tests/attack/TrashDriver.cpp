// One move to the Trash, as a program of its own: TrashDriver HOME RELATIVE [DEVICE:INODE:SECONDS:NANOSECONDS]
// Prints "ok LOCATION", or "failed CODE MESSAGE"; exit status 0 when the move was reported as done, 1 when it failed.
// In the system call trace the move lies between two reads of the descriptor -1 (marks).
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "platform/linux/LinuxTrash.h"
#include "tests/attack/TraceMark.h"

namespace {

std::optional<kestrune::FileIdentity> parsedIdentity(const char* text) {
    kestrune::FileIdentity identity;
    char colon = 0;
    std::istringstream fields(text);
    fields >> identity.device >> colon >> identity.inode >> colon >> identity.birthSeconds >> colon >>
        identity.birthNanoseconds;
    return fields ? std::optional(identity) : std::nullopt;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::cerr << "usage: TrashDriver HOME RELATIVE [DEVICE:INODE:SECONDS:NANOSECONDS]\n";
        return EXIT_FAILURE + 1;
    }
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    kestrune::LinuxTrash trash(dataHome == nullptr ? std::nullopt : std::optional<std::string>(dataHome));
    kestrune::TrashRequest request{arguments[1], arguments[2], std::nullopt};
    if (count > 3) {
        request.expected = parsedIdentity(arguments[3]);
    }
    kestrune::attack::mark();
    const auto result = trash.moveToTrash(request);
    kestrune::attack::mark();
    if (result.ok()) {
        std::cout << "ok " << result.value().location << '\n';
        return EXIT_SUCCESS;
    }
    std::cout << "failed " << static_cast<int>(result.error().failure) << ' ' << result.error().message << '\n';
    return EXIT_FAILURE;
}
