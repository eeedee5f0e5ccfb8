#include "platform/linux/LinuxDockTile.h"

namespace kestrune {

void LinuxDockTile::setActivationPolicy(ActivationPolicy /*policy*/) {
}

void LinuxDockTile::setBadgeLabel(const std::string& /*label*/) {
}

}  // namespace kestrune
