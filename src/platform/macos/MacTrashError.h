#pragma once

#include "platform/TrashErrors.h"

namespace kestrune {

/// The sentence for an errno, with the C library's own words where it has no advice of its own.
[[nodiscard]] TrashError trashSystemError(int errorNumber);
[[nodiscard]] PutBackError putBackSystemError(int errorNumber);

}  // namespace kestrune
