#pragma once

#include <sys/attr.h>

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/WalkEntry.h"

namespace kestrune {

/// An entry of a folder as getattrlistbulk(2) told it.
struct MacDirectoryEntry {
    const char* name = nullptr;  ///< in the buffer it was read from; "" when it could not be read
    WalkEntry entry;
};

/// What a walk asks getattrlistbulk(2) for.
[[nodiscard]] attrlist attributesOfWalk();

/// Reads what getattrlistbulk(2) put into the buffer, so many entries, and appends them; "." and ".." are left out.
/// Nothing outside the buffer is read, whatever it holds. False when the entries do not follow each other as they
/// should; those before stay. Any thread.
///
/// From the manual pages getattrlistbulk(2) and getattrlist(2):
///   - Each entry begins with its length (32 bits, this field included) and the set of attributes that were returned;
///     the next one begins where the length ends. The length is checked against what is left of the buffer.
///   - An error of the entry comes next, then the returned attributes in the order of their bits, common ones first,
///     then the folder's or the file's. What was not returned takes no place, so the set is followed; a set with
///     attributes nobody asked for makes the entry unreadable.
///   - Fields are aligned to 32 bits even when they have 64, so they are copied out.
///   - The name lies where its reference says, counted from the reference, with a NUL that its length includes. Offset,
///     length and NUL are checked, and a name with "/" in it is none.
///   - A link is described itself, not what it leads to.
///   - ATTR_FILE_ALLOCSIZE counts what all forks of a file take on disk. A clone counts in full, like its original.
///   - DIR_MNTSTATUS_MNTPOINT and DIR_MNTSTATUS_TRIGGER mark where another file system is, or will be once somebody
///     looks. Such a folder is elsewhere; so /System/Volumes/Data is not counted a second time below "/", where its
///     folders already appear through firmlinks.
///   - SF_DATALESS marks what lies in a cloud. Listing such a folder would fetch it, so it is unreadable; such a file
///     takes what its size on this disk says.
[[nodiscard]] bool readAttributes(std::string_view buffer, std::size_t count, std::vector<MacDirectoryEntry>& entries);

}  // namespace kestrune
