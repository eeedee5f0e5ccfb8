#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/LinkOpener.h"

class QDBusMessage;
class QObject;

namespace kestrune {

/// Asks the desktop through the portal org.freedesktop.portal.OpenURI, or xdg-open or gio where there is none. Main
/// thread.
class LinuxLinkOpener final : public LinkOpener {
public:
    /// Who can open a link.
    struct Desktop {
        std::vector<std::string> dataFolders;  ///< where the services of the session bus are announced
        std::string programs = "/usr/bin";

        bool operator==(const Desktop&) const = default;
    };

    /// helpFolder holds the pages of the installed help.
    explicit LinuxLinkOpener(std::string helpFolder);
    LinuxLinkOpener(std::string helpFolder, Desktop desktop);
    ~LinuxLinkOpener() override;

    bool open(const std::string& address) override;

private:
    [[nodiscard]] bool hasPortal() const;
    [[nodiscard]] bool askPortal(const QDBusMessage& message, const std::string& uri);
    [[nodiscard]] bool startProgram(const std::string& uri) const;

    const std::string m_helpFolder;
    const Desktop m_desktop;
    std::unique_ptr<QObject> m_context;  ///< answers that arrive after it is gone are dropped
};

}  // namespace kestrune
