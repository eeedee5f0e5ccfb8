#pragma once

#include <QObject>

#include <memory>
#include <string>

#include "platform/UpdateFetcher.h"
#include "platform/linux/FetchProcess.h"

namespace kestrune {

/// Runs kestrune-fetch, a program of its own, for each transfer: what comes from the network is read there, and neither
/// its libraries nor its memory stay with the program that runs all day.
class LinuxUpdateFetcher final : public UpdateFetcher {
public:
    /// program is the absolute path of kestrune-fetch; cacheFolder is where archives are kept until they are installed.
    LinuxUpdateFetcher(std::string program, std::string cacheFolder, FetchPatience patience = {});

    /// Where kestrune-fetch lies for a program in folder: beside it where it was built, else where it is installed.
    [[nodiscard]] static std::string programFor(const std::string& folder);

    [[nodiscard]] std::unique_ptr<Transfer> fetchFeed(const UpdateSource& source, FeedAnswer answer) override;
    [[nodiscard]] std::unique_ptr<Transfer> fetchArchive(const UpdateSource& source, const UpdateItem& item,
                                                         Progress progress, ArchiveAnswer answer) override;

private:
    [[nodiscard]] std::unique_ptr<Transfer> run(const FetchRequest& request, FetchProcess::Progress progress,
                                                FetchProcess::Done done);

    const std::string m_program;
    const std::string m_cacheFolder;
    const FetchPatience m_patience;
    std::unique_ptr<QObject> m_runs;  ///< the parent of the runs
};

}  // namespace kestrune
