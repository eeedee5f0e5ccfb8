#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Result.h"
#include "platform/Updater.h"

namespace kestrune {

/// Puts a verified archive in the place of the running program. Main thread; the answer comes from the event loop.
class UpdateInstaller {
public:
    enum class Outcome {
        replaced,    ///< the next start is the new version
        handedOver,  ///< the system's own installer has it now
    };

    using Answer = std::function<void(Result<Outcome, UpdaterError>)>;

    UpdateInstaller() = default;
    UpdateInstaller(const UpdateInstaller&) = delete;
    UpdateInstaller& operator=(const UpdateInstaller&) = delete;
    virtual ~UpdateInstaller() = default;

    /// How the names of archives end that fit the way this program was installed, "AppImage" or "deb"; nothing when it
    /// was neither, and then no archive can be installed.
    [[nodiscard]] virtual std::optional<std::string> archiveSuffix() const = 0;

    /// Installs the archive at path, a verified one.
    virtual void install(const std::string& path, Answer answer) = 0;

    /// Starts the version that was put in place and ends this one, after outcome replaced.
    virtual void relaunch() = 0;
};

}  // namespace kestrune
