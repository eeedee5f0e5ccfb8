#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestrune {

enum class ReadFailure { missing, unreadable, tooLarge };

struct FileContent {
    std::optional<std::string> bytes;            ///< the whole file, or
    ReadFailure failure = ReadFailure::missing;  ///< why there are none
};

/// Small files that must survive a crash: the activity log and the preferences. Any thread; one writer a file.
class FileStore {
public:
    FileStore() = default;
    FileStore(const FileStore&) = delete;
    FileStore& operator=(const FileStore&) = delete;
    virtual ~FileStore() = default;

    /// The file's bytes when it is a regular file of at most maxBytes.
    [[nodiscard]] virtual FileContent read(const std::string& path, std::size_t maxBytes) const = 0;

    /// Puts bytes in the place of the file, all or nothing: written beside it with mode 0600, synced, renamed over it,
    /// and the folder synced. Missing folders are made with mode 0700. False when any step fails; the old file, if
    /// there was one, is then whole and in place, and nothing else is left behind.
    [[nodiscard]] virtual bool replace(const std::string& path, std::string_view bytes) = 0;

    /// Renames the file to a free name beside it ("preferences.json.unreadable-1" …), so that it is not overwritten.
    [[nodiscard]] virtual bool setAside(const std::string& path) = 0;
};

}  // namespace kestrune
