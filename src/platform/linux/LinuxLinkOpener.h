#pragma once

#include <string>

#include "platform/LinkOpener.h"

namespace kestrune {

/// Asks the desktop through the portal org.freedesktop.portal.OpenURI, or xdg-open where there is none.
class LinuxLinkOpener final : public LinkOpener {
public:
    /// helpFolder holds the pages of the installed help.
    explicit LinuxLinkOpener(std::string helpFolder);

    bool open(const std::string& address) override;

private:
    const std::string m_helpFolder;
};

}  // namespace kestrune
