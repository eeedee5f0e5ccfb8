#pragma once

#include <string>

#include "platform/Updater.h"

/// What is told about updates, in the user's language.
namespace kestrune::UpdateTexts {

/// A statement with its title.
struct Outcome {
    std::string title;
    std::string text;
};

[[nodiscard]] UpdaterError noUpdate();
[[nodiscard]] UpdaterError checkStopped();
[[nodiscard]] UpdaterError downloadStopped(const UpdateItem& item);

[[nodiscard]] Outcome upToDate(const std::string& runningVersion);
[[nodiscard]] Outcome checkFailed(const UpdaterError& error);
[[nodiscard]] Outcome installFailed(const UpdateItem& item, const UpdaterError& error);

/// This copy of the program was installed in a way that no archive fits.
[[nodiscard]] Outcome installYourself(const UpdateItem& item);

/// The system's own installer has item's archive now.
[[nodiscard]] Outcome handedOver(const UpdateItem& item);

}  // namespace kestrune::UpdateTexts
