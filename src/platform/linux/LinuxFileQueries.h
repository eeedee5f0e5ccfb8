#pragma once

#include "platform/FileQueries.h"

namespace kestrune {

/// A path with a NUL byte leads nowhere. fileSize() of a link is the link's own length.
class LinuxFileQueries final : public FileQueries {
public:
    LinuxFileQueries() = default;

    [[nodiscard]] std::optional<FileKind> kind(const std::string& path) const override;
    [[nodiscard]] std::optional<std::int64_t> fileSize(const std::string& path) const override;
    [[nodiscard]] bool isReadable(const std::string& path) const override;
    [[nodiscard]] std::string resolvingLinks(const std::string& path) const override;
};

}  // namespace kestrune
