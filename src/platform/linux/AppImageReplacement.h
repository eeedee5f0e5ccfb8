#pragma once

#include <optional>
#include <string>

#include "platform/Updater.h"

namespace kestrune {

/// Puts a copy of the AppImage at archive in the place of the one at appImage, by one rename and with the permissions
/// of the old one; a running program keeps the old one. The error, and then the old one is as it was. Takes as long as
/// copying does; any thread.
[[nodiscard]] std::optional<UpdaterError> replaceAppImage(const std::string& appImage, const std::string& archive);

}  // namespace kestrune
