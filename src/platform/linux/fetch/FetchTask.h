#pragma once

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/FetchMessages.h"
#include "platform/linux/fetch/ArchiveFile.h"
#include "platform/linux/fetch/HttpsTransfer.h"

namespace kestrune {

/// Carries out one request. Event loop of its thread; letting go of it ends the transfer and takes away what is not
/// verified.
class FetchTask final {
public:
    using Answer = std::function<void(const FetchAnswer&)>;

    static constexpr std::int64_t largestArchive = std::int64_t{4} << 30;

    /// How long the transfer of a feed may take.
    static constexpr std::chrono::milliseconds feedPatience{30'000};

    explicit FetchTask(FetchRequest request);

    /// answer gets the progress of an archive and, once, what came of it; from the event loop.
    void start(Answer answer);

private:
    void startFeed();
    void startArchive();
    [[nodiscard]] std::optional<FetchFailure> takeOfArchive(const QByteArray& bytes);
    void finishFeed(std::optional<FetchFailure> failure);
    void finishArchive(std::optional<FetchFailure> failure);

    const FetchRequest m_request;
    Answer m_answer;
    HttpsTransfer m_transfer;
    QByteArray m_feed;
    std::unique_ptr<ArchiveFile> m_archive;
    std::chrono::steady_clock::time_point m_lastProgress;
};

}  // namespace kestrune
