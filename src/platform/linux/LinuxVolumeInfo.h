#pragma once

#include "platform/VolumeInfo.h"

namespace kestrune {

/// Asks the file system by statvfs. Blocks reserved for the system administrator count as used.
class LinuxVolumeInfo final : public VolumeInfo {
public:
    [[nodiscard]] std::optional<VolumeCapacity> capacity(const std::string& path) override;
};

}  // namespace kestrune
