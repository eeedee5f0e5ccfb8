#include "platform/linux/LinuxTrashError.h"

#include <cstring>

namespace kestrune {

namespace {

std::string_view descriptionOf(int errorNumber) {
    const char* description = ::strerrordesc_np(errorNumber);
    return description == nullptr ? std::string_view() : description;
}

}  // namespace

TrashError trashSystemError(int errorNumber) {
    return trashSystemError(errorNumber, descriptionOf(errorNumber));
}

PutBackError putBackSystemError(int errorNumber) {
    return putBackSystemError(errorNumber, descriptionOf(errorNumber));
}

}  // namespace kestrune
