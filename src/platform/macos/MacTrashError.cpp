#include "platform/macos/MacTrashError.h"

#include <system_error>

namespace kestrune {

TrashError trashSystemError(int errorNumber) {
    return trashSystemError(errorNumber, std::generic_category().message(errorNumber));
}

PutBackError putBackSystemError(int errorNumber) {
    return putBackSystemError(errorNumber, std::generic_category().message(errorNumber));
}

}  // namespace kestrune
