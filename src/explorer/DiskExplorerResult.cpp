#include "explorer/DiskExplorerResult.h"

namespace kestrune {

std::int64_t DiskExplorerResult::totalBytes() const {
    std::int64_t total = 0;
    for (const auto& item : folders) {
        total += item.bytes;
    }
    return total;
}

std::int64_t DiskExplorerResult::measuredBytes() const {
    return totalBytes() + otherBytes;
}

}  // namespace kestrune
