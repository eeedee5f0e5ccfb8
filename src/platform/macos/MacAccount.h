#pragma once

#include <string>

namespace kestrune::MacAccount {

/// The account's home folder: HOME when it is absolute and leads to a folder, else what the user database says. Links
/// are resolved, so that later checks can refuse every link below it. Any thread.
[[nodiscard]] std::string homeDirectory();

}  // namespace kestrune::MacAccount
