#pragma once

#include "platform/VolumeInfo.h"

namespace kestrune {

/// Asks for the volume's resource values. What the system could free on demand does not count as available.
class MacVolumeInfo final : public VolumeInfo {
public:
    [[nodiscard]] std::optional<VolumeCapacity> capacity(const std::string& path) override;
};

}  // namespace kestrune
