#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UpdateFetcher.h"
#include "platform/Updater.h"

/// Which items of a feed are updates. An item that breaks one of the rules does not exist. Pure functions.
namespace kestrune::UpdateRules {

/// What an update must fit.
struct Program {
    std::string runningVersion;
    std::optional<std::string> archiveSuffix;  ///< how the archive's name must end; nothing: any name will do
};

/// item as an update for program. Nothing unless
/// - its version is a number of at most 128 characters, and newer than the running one;
/// - what is shown of the version (the short version, where there is one) is valid UTF-8 of at most 64 characters, none
///   of them disturbing and one visible;
/// - it is for no system in particular or for Linux, and its archive is of the program's kind. A minimum system version
///   is not looked at: those of feeds do not number this system;
/// - its archive lies at an https address, has a length of 1 byte to 4 GiB, and a signature of 64 bytes in base64.
[[nodiscard]] std::optional<UpdateItem> update(const FeedItem& item, const Program& program);

/// The update of the highest version among feed, the first of them where several have it.
[[nodiscard]] std::optional<UpdateItem> bestUpdate(const std::vector<FeedItem>& feed, const Program& program);

/// What is told about an update: its lines and tabs, without any other disturbing character, at most 20,000 characters
/// and no white space around it.
[[nodiscard]] std::string plainNotes(std::string_view notes);

}  // namespace kestrune::UpdateRules
