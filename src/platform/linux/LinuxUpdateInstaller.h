#pragma once

#include <memory>
#include <string>

#include "base/SerialQueue.h"
#include "platform/UpdateInstaller.h"

class QObject;

namespace kestrune {

class PackageHandover;

/// Replaces a running AppImage by one rename, or hands a .deb to the system's installer.
class LinuxUpdateInstaller final : public UpdateInstaller {
public:
    /// executable is the absolute path of this program; startedFile that of the file that starts it the next time,
    /// another one where it runs from an AppImage. packageFiles lists what its package installed.
    LinuxUpdateInstaller(std::string executable, std::string startedFile,
                         std::string packageFiles = "/var/lib/dpkg/info/kestrune.list");
    ~LinuxUpdateInstaller() override;

    [[nodiscard]] std::optional<std::string> archiveSuffix() const override;

    /// A package goes to the session's package installer, else to the desktop's program for packages. An archive that
    /// took its place is removed.
    void install(const std::string& path, Answer answer) override;

    /// Gives up the name on the session bus first, which the new version takes as the sign that it runs alone.
    void relaunch() override;

private:
    [[nodiscard]] bool isAppImage() const;
    [[nodiscard]] bool isPackage() const;
    void replace(const std::string& path, const Answer& answer);
    void handOver(const std::string& path, const Answer& answer);

    const std::string m_executable;
    const std::string m_startedFile;
    const std::string m_packageFiles;
    std::unique_ptr<QObject> m_context;  ///< of answers on their way to the main thread
    std::unique_ptr<PackageHandover> m_handover;
    ThreadSerialQueue m_queue;
};

}  // namespace kestrune
