#include "platform/macos/MacAccount.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kestrune::MacAccount {

namespace {

std::filesystem::path fromUserDatabase() {
    std::array<char, 16 * 1024> buffer{};
    passwd record{};
    passwd* found = nullptr;
    const bool isKnown = getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
    return isKnown && found->pw_dir != nullptr ? found->pw_dir : "/";
}

}  // namespace

std::string homeDirectory() {
    const char* variable = std::getenv("HOME");
    std::filesystem::path home = variable == nullptr ? "" : variable;
    std::error_code error;
    if (!home.is_absolute() || !std::filesystem::is_directory(home, error)) {
        home = fromUserDatabase();
    }
    const std::filesystem::path resolved = std::filesystem::canonical(home, error);
    return error ? home.string() : resolved.string();
}

}  // namespace kestrune::MacAccount
