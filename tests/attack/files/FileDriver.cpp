// The durable writers as a program of its own, to be killed and disturbed:
//   FileDriver replace PATH CONTENT   one replace; prints "ok" or "failed"
//   FileDriver set PATH CONTENT       one preference "value" set to CONTENT; prints the same
//   FileDriver files PATH FIRST       replaces PATH by "N N N …" for N = FIRST, FIRST + 1 …; prints each N once durable
//   FileDriver preferences PATH FIRST the same through the preference "counter"
// In a system call trace a single replace or set lies between two reads of the descriptor -1.
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxPreferences.h"

namespace {

constexpr int repeats = 2000;

void mark() {
    char byte = 0;
    const auto ignored = ::read(-1, &byte, 1);
    static_cast<void>(ignored);
}

int once(const std::string& mode, const std::string& path, const std::string& content) {
    kestrune::LinuxFileStore files;
    kestrune::LinuxPreferences preferences(path, files);
    mark();
    const bool done = mode == "replace" ? files.replace(path, content) : preferences.setTexts("value", {content});
    mark();
    std::cout << (done ? "ok" : "failed") << std::endl;
    return EXIT_SUCCESS;
}

bool save(const std::string& mode, const std::string& path, long number, kestrune::FileStore& files,
          kestrune::Preferences& preferences) {
    if (mode == "preferences") {
        return preferences.setNumbers("counter", {static_cast<double>(number)});
    }
    std::string bytes;
    for (int repeat = 0; repeat < repeats; ++repeat) {
        bytes += std::to_string(number) + ' ';
    }
    return files.replace(path, bytes);
}

int untilKilled(const std::string& mode, const std::string& path, long number) {
    kestrune::LinuxFileStore files;
    kestrune::LinuxPreferences preferences(path, files);
    while (save(mode, path, number, files, preferences)) {
        std::cout << number << std::endl;
        ++number;
    }
    return EXIT_FAILURE;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::cerr << "usage: FileDriver replace|set|files|preferences PATH CONTENT|FIRST\n";
        return EXIT_FAILURE + 1;
    }
    const std::string mode = arguments[1];
    if (mode == "replace" || mode == "set") {
        return once(mode, arguments[2], arguments[3]);
    }
    return untilKilled(mode, arguments[2], std::strtol(arguments[3], nullptr, 10));
}
