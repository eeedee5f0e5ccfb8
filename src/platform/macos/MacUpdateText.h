#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Updater.h"

/// What the update framework tells, in the terms of Updater.h. Pure functions.
namespace kestrune::MacUpdateText {

/// Whether a bundle whose Info.plist holds these two looks for updates at all.
[[nodiscard]] bool isConfigured(std::string_view feedUrl, std::string_view publicKey);

/// The item behind the feed's texts. What is shown of its version becomes one line of at most 64 characters, and the
/// version itself where nothing of it can be shown.
[[nodiscard]] UpdateItem item(const std::string& version, const std::string& displayVersion);

// The framework's numbers of what the user chose.
constexpr std::int64_t skipNumber = 0;
constexpr std::int64_t installNumber = 1;
constexpr std::int64_t dismissNumber = 2;

/// What the user chose; nothing for a number that no version of the framework had when this was written.
[[nodiscard]] std::optional<UpdateChoice> choice(std::int64_t number);

/// The framework's error by its number. Its numbers are grouped: 1xxx the feed, 2xxx the download, 3xxx the check of
/// what was downloaded, 4xxx the installation; 1001 says that there is no update. Any other number stays as it is.
[[nodiscard]] UpdaterError error(std::int64_t number, const std::string& description);

}  // namespace kestrune::MacUpdateText
