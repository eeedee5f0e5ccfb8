#include "platform/linux/ApplicationSource.h"

namespace kestrune {

std::vector<std::unique_ptr<ApplicationSource>> makeApplicationSources() {
    std::vector<std::unique_ptr<ApplicationSource>> sources;
    return sources;
}

}  // namespace kestrune
