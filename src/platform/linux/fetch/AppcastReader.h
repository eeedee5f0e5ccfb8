#pragma once

#include <QByteArray>

#include <vector>

#include "base/Result.h"
#include "platform/UpdateFetcher.h"
#include "platform/linux/FetchFailure.h"

/// Reads an appcast: RSS 2.0 whose items carry what Sparkle's namespace adds. Pure.
namespace kestrune::AppcastReader {

inline constexpr qsizetype longestFeed = qsizetype{1} << 20;
inline constexpr int deepest = 32;
inline constexpr std::size_t itemsAtMost = 1000;

/// The items in their order; those of a channel of their own (betas) are left out. Where an item has several
/// enclosures the first one counts, as RSS has but one; what an element says counts before what the enclosure says.
[[nodiscard]] Result<std::vector<FeedItem>, FetchReason> read(const QByteArray& feed);

}  // namespace kestrune::AppcastReader
