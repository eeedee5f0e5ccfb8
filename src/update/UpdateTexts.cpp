#include "update/UpdateTexts.h"

#include "base/Localized.h"

namespace kestrune::UpdateTexts {

UpdaterError noUpdate() {
    return {UpdaterError::noUpdate, localized("No newer version was found.")};
}

UpdaterError checkStopped() {
    return {UpdaterError::cancelled, localized("The check for updates was stopped.")};
}

UpdaterError downloadStopped(const UpdateItem& item) {
    return {UpdaterError::cancelled, localized("The download of version %1 was stopped.", {item.displayVersion})};
}

Outcome upToDate(const std::string& runningVersion) {
    return {localized("You’re up to date"),
            localized("Kestrune %1 is the newest version available.", {runningVersion})};
}

Outcome checkFailed(const UpdaterError& error) {
    return {localized("Updates couldn’t be checked"), localized("%1 Check again later.", {error.description})};
}

Outcome installFailed(const UpdateItem& item, const UpdaterError& error) {
    return {localized("Version %1 couldn’t be installed", {item.displayVersion}),
            localized("%1 Check for updates again, or download the new version yourself.", {error.description})};
}

Outcome installYourself(const UpdateItem& item) {
    return {localized("Version %1 is ready to download", {item.displayVersion}),
            localized("This copy of Kestrune can’t replace itself. Download the new version from %1 and install it the "
                      "way you installed this one.",
                      {item.archiveUrl})};
}

Outcome handedOver(const UpdateItem& item) {
    return {localized("Version %1 was handed to the system’s installer", {item.displayVersion}),
            localized("Finish the installation there, then quit Kestrune and open it again.")};
}

}  // namespace kestrune::UpdateTexts
