#pragma once

#include <string>

#include "platform/LinkOpener.h"

namespace kestrune {

/// Asks the workspace. Main thread.
class MacLinkOpener final : public LinkOpener {
public:
    /// helpFolder holds the pages of the help inside the application's bundle.
    explicit MacLinkOpener(std::string helpFolder);

    bool open(const std::string& address) override;

private:
    const std::string m_helpFolder;
};

}  // namespace kestrune
