#pragma once

#include <optional>
#include <string>

namespace kestrune::LinuxAccount {

/// The account's home folder: HOME when it is absolute and leads to a folder, else what the user database says. Links
/// are resolved, so that later checks can refuse every link below it.
[[nodiscard]] std::string homeDirectory();

/// The environment variable; empty when it is not set.
[[nodiscard]] std::string variable(const char* name);

/// The environment variable when it is set to an absolute path, as the base directory rules ask; else empty.
[[nodiscard]] std::string absoluteVariable(const char* name);

/// The absolute path of the program that runs, as the kernel has it; of the AppImage's own file system where it runs
/// from one.
[[nodiscard]] std::string executablePath();

/// The file that starts this program the next time: the AppImage it runs from, else its executable. An AppImage that
/// only started this program does not count.
[[nodiscard]] std::string startedFile();

/// XDG_DATA_HOME when it is set to an absolute path. Links are resolved once, as those of the home are: a home that is
/// reached through one must not cost the user its Trash, which refuses every link on the way.
[[nodiscard]] std::optional<std::string> dataHome();

}  // namespace kestrune::LinuxAccount
