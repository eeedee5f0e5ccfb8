#include "platform/linux/LinuxAccount.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <vector>

namespace kestrune::LinuxAccount {

namespace {

bool isDirectory(const std::string& path) {
    struct stat status {};

    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string fromUserDatabase() {
    std::vector<char> buffer(16 * 1024);

    struct passwd record {};
    struct passwd* found = nullptr;
    if (getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found) != 0 || found == nullptr ||
        found->pw_dir == nullptr) {
        return "/";
    }
    return found->pw_dir;
}

}  // namespace

std::string absoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value == '/' ? value : "";
}

std::string homeDirectory() {
    std::string home = absoluteVariable("HOME");
    if (!isDirectory(home)) {
        home = fromUserDatabase();
    }
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(home.c_str(), nullptr), &std::free);
    return resolved ? resolved.get() : home;
}

}  // namespace kestrune::LinuxAccount
