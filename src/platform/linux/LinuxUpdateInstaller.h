#pragma once

#include <string>

#include "platform/UpdateInstaller.h"

namespace kestrune {

/// Replaces a running AppImage by one rename, or hands a .deb to the system's installer.
class LinuxUpdateInstaller final : public UpdateInstaller {
public:
    /// executable is the absolute path of this program; appImage that of the AppImage it runs from, empty for none.
    LinuxUpdateInstaller(std::string executable, std::string appImage);

    [[nodiscard]] std::optional<std::string> archiveSuffix() const override;
    void install(const std::string& path, Answer answer) override;
    void relaunch() override;

private:
    const std::string m_executable;
    const std::string m_appImage;
};

}  // namespace kestrune
