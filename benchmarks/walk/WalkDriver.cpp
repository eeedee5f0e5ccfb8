// Measures one folder with the program's walker and prints "ALLOCATED-BYTES ENTRIES UNREADABLE": what
// benchmarks/walk.py compares with du.
#include <cstdlib>
#include <iostream>

#include "platform/linux/LinuxDirectoryWalker.h"

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: walk_driver FOLDER\n";
        return EXIT_FAILURE;
    }
    const kestrune::TreeSize size = kestrune::LinuxDirectoryWalker().measure(arguments[1], [] { return false; });
    std::cout << size.allocatedBytes << ' ' << size.entries << ' ' << size.unreadable << '\n';
    return size.opened ? EXIT_SUCCESS : EXIT_FAILURE;
}
