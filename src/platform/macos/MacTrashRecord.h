#pragma once

#include <optional>
#include <string>

#include "platform/Trash.h"

namespace kestrune {

/// The restore record of an item: an extended attribute of its own, because where macOS notes an item's place is known
/// to the Finder alone. It names the place and the item it was written for, so that a copy of the attribute on another
/// item counts for nothing. Whoever may write the item can forge it: what it says is checked like any other input.
/// Any thread.
struct MacTrashRecord {
    static constexpr const char* attribute = "com.torvandelsyn.kestrune.origin";
    static constexpr std::size_t longest = std::size_t{64} << 10U;

    /// Gives the open item the record of the place it lies at. False when its file system keeps no attributes or the
    /// item may not be written: then it cannot be put back from here, but from the Finder.
    static bool write(int item, const FileIdentity& identity, const std::string& path);

    /// The place in the open item's record; nothing without one, and when it was written for another item or does not
    /// have the form.
    [[nodiscard]] static std::optional<std::string> read(int item, const FileIdentity& identity);

    /// Takes the record away. A record that stays is harmless: the next move replaces it.
    static void remove(int item);
};

}  // namespace kestrune
