#include "platform/linux/LinuxUpdateFetcher.h"

#include <unistd.h>

#include <QPointer>

#include <utility>

#include "platform/linux/FetchFailure.h"

namespace kestrune {

namespace {

class FetchTransfer final : public UpdateFetcher::Transfer {
public:
    explicit FetchTransfer(FetchProcess* process) : m_process(process) {}

    FetchTransfer(const FetchTransfer&) = delete;
    FetchTransfer& operator=(const FetchTransfer&) = delete;

    ~FetchTransfer() override {
        if (m_process != nullptr) {
            m_process->abandon();
        }
    }

private:
    QPointer<FetchProcess> m_process;
};

/// What Expected says of answer, or the error; an answer of another kind is none.
template <typename Expected>
const Expected* expected(const FetchAnswer& answer, UpdaterError& error) {
    const auto* const failure = std::get_if<FetchFailure>(&answer);
    error = describe(failure != nullptr ? *failure : FetchFailure{});
    return std::get_if<Expected>(&answer);
}

}  // namespace

LinuxUpdateFetcher::LinuxUpdateFetcher(std::string program, std::string cacheFolder, FetchPatience patience)
    : m_program(std::move(program)),
      m_cacheFolder(std::move(cacheFolder)),
      m_patience(patience),
      m_runs(std::make_unique<QObject>()) {
}

std::string LinuxUpdateFetcher::programFor(const std::string& folder) {
    const std::string beside = folder + "/kestrune-fetch";
    return ::access(beside.c_str(), X_OK) == 0 ? beside : folder + "/../libexec/kestrune/kestrune-fetch";
}

std::unique_ptr<UpdateFetcher::Transfer> LinuxUpdateFetcher::fetchFeed(const UpdateSource& source, FeedAnswer answer) {
    FetchRequest request;
    request.url = source.feedUrl;
    request.authorityFile = source.authorityFile;
    return run(
        request, [](std::int64_t) {},
        [answer = std::move(answer)](const FetchAnswer& result) {
            UpdaterError error;
            if (const auto* const items = expected<std::vector<FeedItem>>(result, error)) {
                answer(*items);
            } else {
                answer(error);
            }
        });
}

std::unique_ptr<UpdateFetcher::Transfer> LinuxUpdateFetcher::fetchArchive(const UpdateSource& source,
                                                                          const UpdateItem& item, Progress progress,
                                                                          ArchiveAnswer answer) {
    const FetchRequest request{FetchRequest::Verb::archive, item.archiveUrl,   source.authorityFile, source.publicKey,
                               item.archiveSignature,       item.archiveBytes, m_cacheFolder};
    return run(
        request,
        [progress = std::move(progress), total = item.archiveBytes](std::int64_t bytes) { progress(bytes, total); },
        [answer = std::move(answer)](const FetchAnswer& result) {
            UpdaterError error;
            if (const auto* const archive = expected<FetchedArchive>(result, error)) {
                answer(archive->path);
            } else {
                answer(error);
            }
        });
}

std::unique_ptr<UpdateFetcher::Transfer> LinuxUpdateFetcher::run(const FetchRequest& request,
                                                                 FetchProcess::Progress progress,
                                                                 FetchProcess::Done done) {
    return std::make_unique<FetchTransfer>(
        new FetchProcess(m_program, request, m_patience, std::move(progress), std::move(done), m_runs.get()));
}

}  // namespace kestrune
