#pragma once

#include <string>

#include "platform/UpdateFetcher.h"
#include "workspace/HelpPages.h"

namespace kestrune {

/// What whoever builds the program decides about it: the cache entries KESTRUNE_FEED_URL … of CMakeLists.txt.
struct BuildSettings {
    UpdateSource updates;      ///< an empty feed: this build does not look for updates
    std::string downloadHost;  ///< where people download the program
    HelpPages helpPages;
};

}  // namespace kestrune
