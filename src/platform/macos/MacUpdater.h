#pragma once

#include <memory>

#include "platform/Updater.h"

namespace kestrune {

/// The updater of this build: the Sparkle framework's, or one that finds nothing where the build has none.
///
/// The framework looks for updates by itself, as often as its user settings say, and shows what it found. It installs
/// by asking the application to quit, so that whoever decides about quitting also decides about this:
/// UpdaterDelegate::shouldInstallUpdate is not called. An item holds its two versions and nothing else, because the
/// framework keeps notes and archive to itself. Main thread.
[[nodiscard]] std::unique_ptr<Updater> makeMacUpdater();

}  // namespace kestrune
