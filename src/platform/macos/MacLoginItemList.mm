#include "platform/macos/MacLoginItemList.h"

#import <ServiceManagement/ServiceManagement.h>

namespace kestrune {

bool MacLoginItemList::isEnabled() const {
    @autoreleasepool {
        if (@available(macOS 13.0, *)) {
            return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
        }
        return false;
    }
}

bool MacLoginItemList::setRegistered(bool on) {
    @autoreleasepool {
        if (@available(macOS 13.0, *)) {
            SMAppService* service = SMAppService.mainAppService;
            const BOOL done = on ? [service registerAndReturnError:nil] : [service unregisterAndReturnError:nil];
            return done == YES;
        }
        return false;
    }
}

}  // namespace kestrune
