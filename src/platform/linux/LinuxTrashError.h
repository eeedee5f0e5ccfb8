#pragma once

#include "platform/TrashErrors.h"

namespace kestrune {

/// The same for an errno alone; the C library's own words for it stay in English.
[[nodiscard]] TrashError trashSystemError(int errorNumber);
[[nodiscard]] PutBackError putBackSystemError(int errorNumber);

}  // namespace kestrune
