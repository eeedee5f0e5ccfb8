#pragma once

#include <map>

#include "platform/VolumeInfo.h"

namespace kestrune {

/// Volumes by the path they are asked for; a path without an entry fails.
class FakeVolumeInfo final : public VolumeInfo {
public:
    [[nodiscard]] std::optional<VolumeCapacity> capacity(const std::string& path) override {
        ++reads;
        const auto volume = volumes.find(path);
        return volume == volumes.end() ? std::nullopt : std::optional(volume->second);
    }

    std::map<std::string, VolumeCapacity> volumes;
    int reads = 0;
};

}  // namespace kestrune
