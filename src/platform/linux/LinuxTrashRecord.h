#pragma once

#include <string>
#include <string_view>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxFileStatus.h"

namespace kestrune {

/// One restore record in the "info" folder of a Trash. It appears there complete and on disk, or not at all. One work
/// queue's thread.
class LinuxTrashRecord final {
public:
    /// info must stay open for as long as the record lives.
    explicit LinuxTrashRecord(int info);

    LinuxTrashRecord(const LinuxTrashRecord&) = delete;
    LinuxTrashRecord& operator=(const LinuxTrashRecord&) = delete;
    ~LinuxTrashRecord();

    /// Writes and syncs the record without giving it a name that anybody reads: 0 or the errno.
    [[nodiscard]] int write(std::string_view text);

    /// Gives the written record the name of the item called name, never replacing another: 0 or the errno, EEXIST when
    /// the name is taken.
    [[nodiscard]] int publish(const std::string& name);

    /// Whether the record in that folder, found there by its published name, is this one.
    [[nodiscard]] bool isIn(int info) const;

    /// Takes the published record away, if it is still this one; write() may follow.
    void withdraw();

private:
    [[nodiscard]] int createTemporary();

    const int m_info;
    LinuxFileDescriptor m_file;
    FileIdentity m_identity;
    std::string m_temporaryName;  ///< empty for a file that has no name at all
    std::string m_publishedName;
};

/// Removes the record of an item called name when it is a leftover of a move that was killed before the item moved:
/// whole, for originalPath, the user's own, and older than any move takes. files must hold no such item. True when one
/// was removed. Any thread.
[[nodiscard]] bool removeStaleRecord(int info, const std::string& name, std::string_view originalPath);

}  // namespace kestrune
