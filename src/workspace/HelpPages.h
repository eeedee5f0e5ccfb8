#pragma once

#include <string>

namespace kestrune {

/// Where the program's pages are: an https address each, or the name of a page of the installed help.
struct HelpPages {
    std::string help = "help";
    std::string updateHelp = "updates";
    std::string releaseNotes = "whats-new";

    bool operator==(const HelpPages&) const = default;
};

}  // namespace kestrune
