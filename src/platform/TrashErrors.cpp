#include "platform/TrashErrors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "base/Localized.h"

namespace kestrune {

namespace {

struct Advice {
    int errorNumber;
    std::string_view cause;
    std::string_view next;
};

constexpr std::string_view tryAgain = localizable("Try again.");

// Causes are worded here as far as users meet them; the C library's words for the rest stay in English as well.
constexpr std::array advices = {
    Advice{ENOSPC, localizable("No space left on device"), localizable("Free some space, then try again.")},
    Advice{EDQUOT, localizable("Disk quota exceeded"), localizable("Free some space, then try again.")},
    Advice{EROFS, localizable("Its disk is read-only"), localizable("Make the disk writable, then try again.")},
    Advice{EACCES, localizable("Permission denied"),
           localizable("Check the permissions of its folder and of the Trash, then try again.")},
    Advice{EPERM, localizable("Operation not permitted"),
           localizable("Check the permissions of its folder and of the Trash, then try again.")},
    Advice{EXDEV, localizable("It lies on another disk than the Trash"),
           localizable("Move it with your file manager instead.")},
    Advice{EINVAL, localizable("Its disk can't move items safely"),
           localizable("Move it with your file manager instead.")},
    Advice{ENOSYS, localizable("This system can't move items safely"),
           localizable("Move it with your file manager instead.")},
    Advice{ENOTSUP, localizable("This system can't move items safely"),
           localizable("Move it with your file manager instead.")},
    Advice{EMFILE, localizable("Too many open files"), localizable("Restart Kestrune, then try again.")},
    Advice{ENFILE, localizable("Too many open files in system"), localizable("Close some apps, then try again.")},
    Advice{ENOMEM, localizable("Cannot allocate memory"), localizable("Close some apps, then try again.")},
    Advice{EIO, localizable("Input/output error"), localizable("Check the disk, then try again.")},
    Advice{ENAMETOOLONG, localizable("Its path is too long"), localizable("Move it with your file manager instead.")},
};

std::string_view causeOf(TrashProblem problem) {
    switch (problem) {
        case TrashProblem::unsafeTrash:
            return localizable("The Trash folder isn't a folder of yours alone");
        case TrashProblem::trashChanged:
            return localizable("The Trash folder changed meanwhile");
        case TrashProblem::noFreeName:
            return localizable("The Trash holds too many items of this name");
        case TrashProblem::holdsTrash:
            return localizable("It holds the Trash itself");
        case TrashProblem::noTopDirectory:
            return localizable("Its disk has no place for a Trash");
    }
    return {};
}

std::string_view nextStepOf(TrashProblem problem) {
    switch (problem) {
        case TrashProblem::unsafeTrash:
            return localizable("Check its owner, its permissions and links that lead to it, then try again.");
        case TrashProblem::trashChanged:
            return tryAgain;
        case TrashProblem::noFreeName:
            return localizable("Empty the Trash, then try again.");
        case TrashProblem::holdsTrash:
            return localizable("Choose another item.");
        case TrashProblem::noTopDirectory:
            return localizable("Move it with your file manager instead.");
    }
    return {};
}

std::string reasonOf(std::string_view cause, std::string_view next) {
    // Translators: why it failed, and what to do next.
    return localized("%1. %2", {localized(cause), localized(next)});
}

std::string reasonOf(int errorNumber, std::string_view description) {
    const auto known = std::find_if(advices.begin(), advices.end(),
                                    [errorNumber](const Advice& advice) { return advice.errorNumber == errorNumber; });
    if (known != advices.end()) {
        return reasonOf(known->cause, known->next);
    }
    return reasonOf(description.empty() ? localizable("Unknown error") : description, tryAgain);
}

std::string reasonOf(TrashProblem problem) {
    return reasonOf(causeOf(problem), nextStepOf(problem));
}

TrashError notMoved(const std::string& reason) {
    return {TrashFailure::system, localized("Couldn't move this item to the Trash: %1", {reason})};
}

PutBackError notPutBack(const std::string& reason) {
    return {PutBackFailure::system, localized("Couldn't put this item back: %1", {reason}), {}};
}

}  // namespace

TrashError protectedOrChanged() {
    return {TrashFailure::protectedOrChanged, {}};
}

TrashError itemMissing() {
    return {TrashFailure::missing, {}};
}

TrashError trashSystemError(int errorNumber, std::string_view description) {
    return notMoved(reasonOf(errorNumber, description));
}

TrashError trashProblem(TrashProblem problem) {
    return notMoved(reasonOf(problem));
}

TrashError leftInTrash(const TrashError& cause) {
    std::string message = localized(
        "This item is in the Trash, but its move couldn't be confirmed or undone. Open the Trash to inspect or "
        "restore it.");
    if (!cause.message.empty()) {
        message += " " + cause.message;
    }
    return {TrashFailure::system, std::move(message)};
}

PutBackError putBackSystemError(int errorNumber, std::string_view description) {
    return notPutBack(reasonOf(errorNumber, description));
}

PutBackError putBackFromUnsafeTrash() {
    return notPutBack(reasonOf(TrashProblem::unsafeTrash));
}

PutBackError leftHalfWay(const PutBackError& cause) {
    std::string message = localized(
        "This move couldn't be confirmed or undone. Look for the item in the Trash and in the folder it came from.");
    if (!cause.message.empty()) {
        message += " " + cause.message;
    }
    return {PutBackFailure::system, std::move(message), {}};
}

}  // namespace kestrune
