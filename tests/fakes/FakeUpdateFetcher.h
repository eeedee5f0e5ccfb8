#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/UpdateFetcher.h"

namespace kestrune {

/// A network that answers when the test says so. What was let go of is not answered any more.
class FakeUpdateFetcher final : public UpdateFetcher {
public:
    [[nodiscard]] std::unique_ptr<Transfer> fetchFeed(const UpdateSource& source, FeedAnswer answer) override {
        ++feedsAsked;
        sources.push_back(source);
        m_feed = std::make_shared<Feed>(Feed{std::move(answer)});
        return std::make_unique<Held<Feed>>(m_feed);
    }

    [[nodiscard]] std::unique_ptr<Transfer> fetchArchive(const UpdateSource& source, const UpdateItem& item,
                                                         Progress progress, ArchiveAnswer answer) override {
        archivesAsked.push_back(item);
        sources.push_back(source);
        m_archive = std::make_shared<Archive>(Archive{std::move(progress), std::move(answer)});
        return std::make_unique<Held<Archive>>(m_archive);
    }

    /// A feed was asked for and neither answered nor let go of.
    [[nodiscard]] bool isFetchingFeed() const { return isWaiting(m_feed); }

    [[nodiscard]] bool isFetchingArchive() const { return isWaiting(m_archive); }

    /// Answers what is waiting; false when nothing is.
    bool answerFeed(Result<std::vector<FeedItem>, UpdaterError> result) { return reply(m_feed, std::move(result)); }

    bool answerArchive(Result<std::string, UpdaterError> result) { return reply(m_archive, std::move(result)); }

    /// Tells how much of the archive is here; false when none is being fetched.
    bool progress(std::int64_t bytes, std::int64_t total) {
        if (!isFetchingArchive()) {
            return false;
        }
        const Progress tell = m_archive->progress;
        tell(bytes, total);
        return true;
    }

    int feedsAsked = 0;
    std::vector<UpdateItem> archivesAsked;
    std::vector<UpdateSource> sources;  ///< of every request, in order

private:
    struct Feed {
        FeedAnswer answer;
        bool letGo = false;
    };

    struct Archive {
        Progress progress;
        ArchiveAnswer answer;
        bool letGo = false;
    };

    template <typename Kind>
    class Held final : public Transfer {
    public:
        explicit Held(std::shared_ptr<Kind> request) : m_request(std::move(request)) {}

        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;

        ~Held() override { m_request->letGo = true; }

    private:
        const std::shared_ptr<Kind> m_request;
    };

    template <typename Kind>
    [[nodiscard]] static bool isWaiting(const std::shared_ptr<Kind>& request) {
        return request && request->answer && !request->letGo;
    }

    template <typename Kind, typename Answer>
    static bool reply(const std::shared_ptr<Kind>& request, Answer result) {
        if (!isWaiting(request)) {
            return false;
        }
        std::exchange(request->answer, nullptr)(std::move(result));
        return true;
    }

    std::shared_ptr<Feed> m_feed;
    std::shared_ptr<Archive> m_archive;
};

}  // namespace kestrune
