#pragma once

#include <string>

namespace kestrune {

/// Opens a page in the user's browser.
class LinkOpener {
public:
    LinkOpener() = default;
    LinkOpener(const LinkOpener&) = delete;
    LinkOpener& operator=(const LinkOpener&) = delete;
    virtual ~LinkOpener() = default;

    /// True when somebody was asked to open it. An https address, or the name of a page of the help that is installed
    /// with the program ("help", "updates", "whats-new"). Returns at once. Main thread.
    virtual bool open(const std::string& address) = 0;
};

}  // namespace kestrune
