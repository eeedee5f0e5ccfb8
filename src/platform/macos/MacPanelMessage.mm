#include "platform/macos/MacPanelMessage.h"

#import <AppKit/AppKit.h>

#include "platform/macos/MacText.h"

namespace kestrune {

void MacPanelMessage::show(const std::string& message) {
    @autoreleasepool {
        for (NSWindow* window in NSApplication.sharedApplication.windows) {
            if ([window isKindOfClass:[NSOpenPanel class]]) {
                static_cast<NSOpenPanel*>(window).message = toNs(message);
            }
        }
    }
}

}  // namespace kestrune
