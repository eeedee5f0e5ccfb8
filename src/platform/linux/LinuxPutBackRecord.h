#pragma once

#include <string>

#include "base/Result.h"
#include "platform/Trash.h"

namespace kestrune {

/// The restore record of an item that lies in the Trash.
struct LinuxPutBackRecord {
    FileIdentity identity;
    std::string originalPath;  ///< as written: absolute in the home Trash, relative to the top directory elsewhere
};

/// Reads the record of the item called name in the "info" folder, following no link and waiting for no FIFO. noRecord
/// when there is none, or when it is not the user's own, larger than any record or not one. Any thread.
[[nodiscard]] Result<LinuxPutBackRecord, PutBackError> readPutBackRecord(int info, const std::string& name);

/// Takes the record of the item called name away if it is still the one that was read; another one keeps its name.
/// Nothing can be done about a failure: a record without an item is harmless, other programs pass over it, and the next
/// move of the item replaces it. One work queue's thread.
void removePutBackRecord(int info, const std::string& name, const FileIdentity& record);

}  // namespace kestrune
