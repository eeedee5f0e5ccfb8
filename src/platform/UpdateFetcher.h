#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Result.h"
#include "platform/Updater.h"

namespace kestrune {

/// One item of the feed as it stands there; empty where the feed says nothing. Nothing of it has been judged.
struct FeedItem {
    std::string version;
    std::string shortVersion;
    std::string os;  ///< the system the archive is for
    std::string minimumSystemVersion;
    std::string notes;  ///< plain text
    std::string url;
    std::string length;
    std::string signature;

    bool operator==(const FeedItem&) const = default;
};

/// Where the feed is and whom to believe. Build settings; the authority is for tests.
struct UpdateSource {
    std::string feedUrl;        ///< https; empty: none
    std::string publicKey;      ///< Ed25519, in base64
    std::string authorityFile;  ///< certificates (PEM) to trust instead of the system's; empty: the system's

    bool operator==(const UpdateSource&) const = default;
};

/// Talks to the network about updates, away from the program's own process. Main thread; answers come from the event
/// loop, once.
class UpdateFetcher {
public:
    /// A transfer under way. Letting go of it ends the transfer without an answer.
    class Transfer {
    public:
        Transfer() = default;
        Transfer(const Transfer&) = delete;
        Transfer& operator=(const Transfer&) = delete;
        virtual ~Transfer() = default;
    };

    using FeedAnswer = std::function<void(Result<std::vector<FeedItem>, UpdaterError>)>;
    using Progress = std::function<void(std::int64_t bytes, std::int64_t total)>;
    using ArchiveAnswer = std::function<void(Result<std::string, UpdaterError>)>;

    UpdateFetcher() = default;
    UpdateFetcher(const UpdateFetcher&) = delete;
    UpdateFetcher& operator=(const UpdateFetcher&) = delete;
    virtual ~UpdateFetcher() = default;

    /// Fetches and reads source's feed: https only, at most 3 redirects within the same host, 1 MiB, 30 seconds; no
    /// document type declaration, 32 levels, 1,000 items.
    [[nodiscard]] virtual std::unique_ptr<Transfer> fetchFeed(const UpdateSource& source, FeedAnswer answer) = 0;

    /// Fetches item's archive into a folder that only this user can enter, and answers its path once its length and
    /// its signature are verified. What was fetched is taken away again in every other case.
    [[nodiscard]] virtual std::unique_ptr<Transfer> fetchArchive(const UpdateSource& source, const UpdateItem& item,
                                                                 Progress progress, ArchiveAnswer answer) = 0;
};

}  // namespace kestrune
