#include "platform/linux/fetch/FetchTask.h"

#include <QMetaObject>
#include <QUrl>

#include <algorithm>
#include <utility>

#include "platform/linux/fetch/AppcastReader.h"

namespace kestrune {

namespace {

constexpr std::chrono::milliseconds progressInterval{100};
constexpr qsizetype longestSuffix = 16;

/// How the archive's name ends: what the address says when that is plain, because installers go by it.
std::string suffixOf(const std::string& address) {
    const QString name = QUrl::fromEncoded(QByteArray::fromStdString(address)).fileName();
    const QString suffix = name.mid(name.lastIndexOf(u'.') + 1);
    const bool isPlain = !suffix.isEmpty() && suffix.size() <= longestSuffix && suffix.size() < name.size() &&
                         std::all_of(suffix.begin(), suffix.end(),
                                     [](QChar letter) { return letter.unicode() < 0x80 && letter.isLetterOrNumber(); });
    return isPlain ? suffix.toStdString() : "update";
}

}  // namespace

FetchTask::FetchTask(FetchRequest request) : m_request(std::move(request)), m_transfer(m_request.authorityFile) {
}

void FetchTask::start(Answer answer) {
    m_answer = std::move(answer);
    if (m_request.verb == FetchRequest::Verb::feed) {
        startFeed();
    } else {
        startArchive();
    }
}

void FetchTask::startFeed() {
    m_transfer.start(
        m_request.url, {.bytes = AppcastReader::longestFeed, .untilEnd = feedPatience},
        [this](const QByteArray& bytes) -> std::optional<FetchFailure> {
            m_feed += bytes;
            return std::nullopt;
        },
        [this](std::optional<FetchFailure> failure) { finishFeed(std::move(failure)); });
}

void FetchTask::startArchive() {
    if (m_request.bytes <= 0 || m_request.bytes > largestArchive) {
        QMetaObject::invokeMethod(
            &m_transfer,
            [this] {
                finishArchive(FetchFailure{FetchReason::archiveLengthUnknown, {}});
            },
            Qt::QueuedConnection);
        return;
    }
    m_archive = std::make_unique<ArchiveFile>(m_request.folder, suffixOf(m_request.url));
    if (m_archive->failure()) {
        QMetaObject::invokeMethod(
            &m_transfer, [this] { finishArchive(m_archive->failure()); }, Qt::QueuedConnection);
        return;
    }
    m_transfer.start(
        m_request.url, {.bytes = m_request.bytes}, [this](const QByteArray& bytes) { return takeOfArchive(bytes); },
        [this](std::optional<FetchFailure> failure) { finishArchive(std::move(failure)); });
}

std::optional<FetchFailure> FetchTask::takeOfArchive(const QByteArray& bytes) {
    if (auto failure = m_archive->write(bytes)) {
        return failure;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lastProgress >= progressInterval || m_archive->size() == m_request.bytes) {
        m_lastProgress = now;
        m_answer(FetchProgress{m_archive->size()});
    }
    return std::nullopt;
}

void FetchTask::finishFeed(std::optional<FetchFailure> failure) {
    if (failure) {
        m_answer(*failure);
        return;
    }
    const auto items = AppcastReader::read(m_feed);
    if (items.ok()) {
        m_answer(items.value());
    } else {
        m_answer(FetchFailure{items.error(), {}});
    }
}

void FetchTask::finishArchive(std::optional<FetchFailure> failure) {
    if (failure && failure->reason == FetchReason::tooLarge) {
        failure->reason = FetchReason::archiveLonger;
    } else if (!failure && m_archive->size() < m_request.bytes) {
        failure = FetchFailure{FetchReason::archiveShorter, {}};
    } else if (!failure) {
        failure = m_archive->verify(m_request.publicKey, m_request.signature);
    }
    if (failure) {
        m_archive.reset();
        m_answer(*failure);
    } else {
        m_answer(FetchedArchive{m_archive->keep()});
    }
}

}  // namespace kestrune
