#include "platform/linux/LinuxUpdateFetcher.h"

#include <utility>

namespace kestrune {

LinuxUpdateFetcher::LinuxUpdateFetcher(std::string program, std::string cacheFolder)
    : m_program(std::move(program)), m_cacheFolder(std::move(cacheFolder)) {
}

std::unique_ptr<UpdateFetcher::Transfer> LinuxUpdateFetcher::fetchFeed(const UpdateSource& /*source*/,
                                                                       FeedAnswer /*answer*/) {
    return nullptr;
}

std::unique_ptr<UpdateFetcher::Transfer> LinuxUpdateFetcher::fetchArchive(const UpdateSource& /*source*/,
                                                                          const UpdateItem& /*item*/,
                                                                          Progress /*progress*/,
                                                                          ArchiveAnswer /*answer*/) {
    return nullptr;
}

}  // namespace kestrune
