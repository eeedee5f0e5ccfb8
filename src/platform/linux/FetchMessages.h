#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/UpdateFetcher.h"
#include "platform/linux/FetchFailure.h"

/// What the program and kestrune-fetch say to each other: one line of JSON each, in UTF-8, paths percent-encoded.
namespace kestrune {

/// What kestrune-fetch is asked for.
struct FetchRequest {
    enum class Verb { feed, archive };

    Verb verb = Verb::feed;
    std::string url;
    std::string authorityFile;  ///< empty: the system's authorities

    // Of an archive alone.
    std::string publicKey;
    std::string signature;
    std::int64_t bytes = 0;
    std::string folder;

    bool operator==(const FetchRequest&) const = default;
};

/// How much of an archive is here.
struct FetchProgress {
    std::int64_t bytes = 0;

    bool operator==(const FetchProgress&) const = default;
};

/// A verified archive.
struct FetchedArchive {
    std::string path;

    bool operator==(const FetchedArchive&) const = default;
};

/// One line of an answer. Everything but progress is the last one.
using FetchAnswer = std::variant<FetchProgress, std::vector<FeedItem>, FetchedArchive, FetchFailure>;

namespace FetchMessages {

/// The longest line that a feed of the allowed size can become.
inline constexpr std::int64_t longestAnswer = std::int64_t{8} << 20;
inline constexpr std::int64_t longestRequest = std::int64_t{64} << 10;

/// With its line end.
[[nodiscard]] std::string encoded(const FetchRequest& request);
[[nodiscard]] std::string encoded(const FetchAnswer& answer);

/// Nothing for a line that is none.
[[nodiscard]] std::optional<FetchRequest> request(std::string_view line);
[[nodiscard]] std::optional<FetchAnswer> answer(std::string_view line);

}  // namespace FetchMessages

}  // namespace kestrune
