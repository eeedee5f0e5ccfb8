#pragma once

#include <string_view>

#include "platform/Trash.h"

namespace kestrune {

/// What can keep an item from the Trash besides a failing system call.
enum class TrashProblem {
    unsafeTrash,    ///< a link, a file, or a folder that others own or may write stands in the Trash's place
    trashChanged,   ///< the Trash was exchanged while the item moved
    noFreeName,     ///< every name that may be tried is taken
    holdsTrash,     ///< the item is the folder that holds the Trash
    noTopDirectory  ///< the item's disk has no folder that a Trash can be put in
};

[[nodiscard]] TrashError protectedOrChanged();
[[nodiscard]] TrashError itemMissing();

/// The failure of a system call as one sentence that says what happened and what to do next. description is the
/// system's own for this errno, for those that have no advice of their own here; empty when it has none.
[[nodiscard]] TrashError trashSystemError(int errorNumber, std::string_view description);

[[nodiscard]] TrashError trashProblem(TrashProblem problem);

/// cause, for an item that lies in the Trash and could not be put back.
[[nodiscard]] TrashError leftInTrash(const TrashError& cause);

/// The same for an item on its way back from the Trash.
[[nodiscard]] PutBackError putBackSystemError(int errorNumber, std::string_view description);

/// For a Trash that a move to it would refuse as well.
[[nodiscard]] PutBackError putBackFromUnsafeTrash();

/// cause, for an item that may lie in the Trash or where it came from, because a move back could not be undone.
[[nodiscard]] PutBackError leftHalfWay(const PutBackError& cause);

}  // namespace kestrune
