#include "platform/linux/ApplicationSource.h"

#include <cstdlib>

#include "platform/linux/SwaySource.h"

namespace kestrune {

std::vector<std::unique_ptr<ApplicationSource>> makeApplicationSources() {
    std::vector<std::unique_ptr<ApplicationSource>> sources;
    const char* const swaySocket = std::getenv("SWAYSOCK");
    sources.push_back(std::make_unique<SwaySource>(swaySocket != nullptr ? swaySocket : ""));
    return sources;
}

}  // namespace kestrune
