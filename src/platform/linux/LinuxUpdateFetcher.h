#pragma once

#include <string>

#include "platform/UpdateFetcher.h"

namespace kestrune {

/// Runs kestrune-fetch, a program of its own, for each transfer: what comes from the network is read there, and neither
/// its libraries nor its memory stay with the program that runs all day.
class LinuxUpdateFetcher final : public UpdateFetcher {
public:
    /// program is the absolute path of kestrune-fetch; cacheFolder is where archives are kept until they are installed.
    LinuxUpdateFetcher(std::string program, std::string cacheFolder);

    [[nodiscard]] std::unique_ptr<Transfer> fetchFeed(const UpdateSource& source, FeedAnswer answer) override;
    [[nodiscard]] std::unique_ptr<Transfer> fetchArchive(const UpdateSource& source, const UpdateItem& item,
                                                         Progress progress, ArchiveAnswer answer) override;

private:
    const std::string m_program;
    const std::string m_cacheFolder;
};

}  // namespace kestrune
