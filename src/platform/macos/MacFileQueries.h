#pragma once

#include "platform/FileQueries.h"

namespace kestrune {

/// A path with a NUL byte leads nowhere. fileSize() of a link is the link's own length. What exists is resolved to the
/// spelling on disk (realpath(3)): on a volume that does not tell upper from lower case, a path spelled another way
/// resolves to another text.
class MacFileQueries final : public FileQueries {
public:
    MacFileQueries() = default;

    [[nodiscard]] std::optional<FileKind> kind(const std::string& path) const override;
    [[nodiscard]] std::optional<std::int64_t> fileSize(const std::string& path) const override;
    [[nodiscard]] bool isReadable(const std::string& path) const override;
    [[nodiscard]] std::string resolvingLinks(const std::string& path) const override;
};

}  // namespace kestrune
