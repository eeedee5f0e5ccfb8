#include "platform/linux/LinuxAccount.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/linux/LinuxFileQueries.h"

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

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string absoluteVariable(const char* name) {
    std::string value = variable(name);
    return value.starts_with('/') ? value : std::string();
}

std::string homeDirectory() {
    std::string home = absoluteVariable("HOME");
    if (!isDirectory(home)) {
        home = fromUserDatabase();
    }
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(home.c_str(), nullptr), &std::free);
    return resolved ? resolved.get() : home;
}

std::string executablePath() {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath("/proc/self/exe", nullptr), &std::free);
    return resolved ? resolved.get() : std::string();
}

std::string startedFile() {
    std::string executable = executablePath();
    std::string image = absoluteVariable("APPIMAGE");
    const std::string mount = absoluteVariable("APPDIR");
    const bool isInImage =
        !image.empty() && !mount.empty() && executable.starts_with(LinuxFileQueries().resolvingLinks(mount) + "/");
    return isInImage ? image : executable;
}

std::optional<std::string> dataHome() {
    const std::string path = absoluteVariable("XDG_DATA_HOME");
    return path.empty() ? std::nullopt : std::optional(LinuxFileQueries().resolvingLinks(path));
}

}  // namespace kestrune::LinuxAccount
