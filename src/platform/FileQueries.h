#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune {

enum class FileKind { directory, other };

/// Questions about single paths that change nothing. Paths are bytes. Any thread.
class FileQueries {
public:
    FileQueries() = default;
    FileQueries(const FileQueries&) = delete;
    FileQueries& operator=(const FileQueries&) = delete;
    virtual ~FileQueries() = default;

    /// What path leads to, links followed; nothing when there is nothing (a link that leads nowhere included).
    [[nodiscard]] virtual std::optional<FileKind> kind(const std::string& path) const = 0;

    /// Length in bytes of the file at path; nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<std::int64_t> fileSize(const std::string& path) const = 0;

    /// Whether the user may read what is at path (access(2) with R_OK).
    [[nodiscard]] virtual bool isReadable(const std::string& path) const = 0;

    /// path with every link resolved, as realpath(3) does; what does not exist is kept as spelled.
    [[nodiscard]] virtual std::string resolvingLinks(const std::string& path) const = 0;
};

}  // namespace kestrune
