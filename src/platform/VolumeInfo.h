#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune {

/// Capacity of a volume in bytes; a part that the system does not tell is nothing.
struct VolumeCapacity {
    std::optional<std::int64_t> total;
    std::optional<std::int64_t> available;  ///< what an ordinary user may still fill

    bool operator==(const VolumeCapacity&) const = default;
};

class VolumeInfo {
public:
    VolumeInfo() = default;
    VolumeInfo(const VolumeInfo&) = delete;
    VolumeInfo& operator=(const VolumeInfo&) = delete;
    virtual ~VolumeInfo() = default;

    /// The volume that holds path; nothing when the query itself fails. Any thread.
    [[nodiscard]] virtual std::optional<VolumeCapacity> capacity(const std::string& path) = 0;
};

}  // namespace kestrune
