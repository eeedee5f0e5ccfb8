#include "platform/macos/MacDockTile.h"

#import <AppKit/AppKit.h>

#include "platform/macos/MacText.h"

namespace kestrune {

void MacDockTile::setActivationPolicy(ActivationPolicy policy) {
    [NSApplication.sharedApplication setActivationPolicy:policy == ActivationPolicy::regular
                                                             ? NSApplicationActivationPolicyRegular
                                                             : NSApplicationActivationPolicyAccessory];
}

void MacDockTile::setBadgeLabel(const std::string& label) {
    NSApplication.sharedApplication.dockTile.badgeLabel = label.empty() ? nil : toNs(label);
}

void MacDockTile::activate() {
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

}  // namespace kestrune
