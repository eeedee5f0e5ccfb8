#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/FetchFailure.h"
#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// An archive as it arrives, in a new folder that nobody else can enter. Both are taken away again with this object
/// unless keep() was called. The folder is locked for as long as the object lives, so that others can tell it from what
/// a killed run left behind. One thread.
class ArchiveFile final {
public:
    /// Below folder, which is made when it is missing; what ended runs left there is removed first. suffix is what the
    /// file's name ends with. See failure().
    ArchiveFile(const std::string& folder, const std::string& suffix);
    ArchiveFile(const ArchiveFile&) = delete;
    ArchiveFile& operator=(const ArchiveFile&) = delete;
    ~ArchiveFile();

    /// Why there is no file.
    [[nodiscard]] const std::optional<FetchFailure>& failure() const { return m_failure; }

    [[nodiscard]] std::optional<FetchFailure> write(const QByteArray& bytes);

    /// Puts the file on disk and holds all of it against the publisher's signature. Both texts are base64.
    [[nodiscard]] std::optional<FetchFailure> verify(const std::string& publicKey, const std::string& signature) const;

    [[nodiscard]] std::int64_t size() const { return m_size; }

    /// Leaves file and folder in place and answers the file's path.
    [[nodiscard]] std::string keep();

private:
    [[nodiscard]] bool openFolder(const std::string& folder);
    void removeStaleFolders() const;
    [[nodiscard]] bool makeFile();

    const std::string m_parentPath;
    const std::string m_name;
    LinuxFileDescriptor m_parent;
    std::string m_folderName;  ///< empty while there is no folder to take away
    LinuxFileDescriptor m_folder;
    LinuxFileDescriptor m_file;
    std::int64_t m_size = 0;
    std::optional<FetchFailure> m_failure;
};

}  // namespace kestrune
