#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Result.h"

namespace kestrune {

/// Tells two folders apart that had the same path one after the other.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t birthSeconds = 0;  ///< creation time; 0 where the file system keeps none
    std::int64_t birthNanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// Where a moved item lies now.
struct TrashedItem {
    std::string location;

    bool operator==(const TrashedItem&) const = default;
};

enum class TrashFailure {
    protectedOrChanged = 1,  ///< a link, a mount point, another owner or another item than the one confirmed
    missing = 2,             ///< nothing is at the path any more
    locationUnknown = 3,     ///< the item moved, but the system did not say where
    system = 4,              ///< the system's own error, in message
};

struct TrashError {
    TrashFailure failure = TrashFailure::system;
    std::string message;  ///< one sentence for failure == system, else empty

    bool operator==(const TrashError&) const = default;
};

struct TrashRequest {
    std::string home;                      ///< the folder nothing outside of which may move
    std::string relativePath;              ///< below home, without ".", ".." and empty components
    std::optional<FileIdentity> expected;  ///< when given, only this very item moves
};

/// Where an item of the Trash would go back to.
struct PutBackPlan {
    std::string location;      ///< where it lies in the Trash
    std::string originalPath;  ///< where its restore record says it came from
    FileIdentity item;         ///< which item that is

    bool operator==(const PutBackPlan&) const = default;
};

enum class PutBackFailure {
    missing,    ///< nothing is at the location any more
    noRecord,   ///< its restore record is gone or unreadable, or names no place below the home folder
    inTheWay,   ///< something is at the place it came from
    noFolder,   ///< the folder it came from is gone, is a link or lies behind one
    changed,    ///< another item than the one planned, or not this user's
    otherDisk,  ///< the folder it came from is on another disk now
    system,     ///< the system's own error, in message
};

struct PutBackError {
    PutBackFailure failure = PutBackFailure::system;
    std::string message;  ///< one sentence for failure == system, else empty
    std::string path;     ///< what is in the way, or the folder that is gone or on another disk; else empty

    bool operator==(const PutBackError&) const = default;
};

/// The one way a file leaves its place. A move is a single rename within one file system: nothing is ever copied or
/// deleted, and no link is followed at or below home. An item keeps its restore record with it in the Trash; where its
/// disk can hold none, the item still moves if the system's own file manager can put it back, and planPutBack answers
/// noRecord. Whoever changes the tree meanwhile can turn a success into an error. What moved instead of the item goes
/// back at once, and where that is not possible the error says that it lies in the Trash.
class Trash {
public:
    Trash() = default;
    Trash(const Trash&) = delete;
    Trash& operator=(const Trash&) = delete;
    virtual ~Trash() = default;

    /// Which item lies at the place now; nothing when there is none or a link is in the way. Any thread.
    [[nodiscard]] virtual std::optional<FileIdentity> identity(const std::string& home,
                                                               const std::string& relativePath) = 0;

    /// Whether nothing lies in the user's Trash, on whichever volumes the system keeps it; nothing when that cannot be
    /// seen. Blocks; a work queue's thread.
    [[nodiscard]] virtual std::optional<bool> isEmpty(const std::string& home) = 0;

    /// Moves one item to the Trash of the file system it lies on. Blocks; a work queue's thread.
    [[nodiscard]] virtual Result<TrashedItem, TrashError> moveToTrash(const TrashRequest& request) = 0;

    /// Reads where the item at location, a place that moveToTrash answered, would go back to. Changes nothing. Any
    /// thread.
    [[nodiscard]] virtual Result<PutBackPlan, PutBackError> planPutBack(const std::string& home,
                                                                        const std::string& location) = 0;

    /// Moves the item back by one rename that replaces nothing, and takes its restore record away afterwards. Answers
    /// where it lies now. Blocks; a work queue's thread.
    [[nodiscard]] virtual Result<std::string, PutBackError> putBack(const std::string& home,
                                                                    const PutBackPlan& plan) = 0;
};

}  // namespace kestrune
