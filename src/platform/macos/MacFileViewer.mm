#include "platform/macos/MacFileViewer.h"

#import <AppKit/AppKit.h>

#include "platform/macos/MacText.h"

namespace kestrune {

void MacFileViewer::reveal(const std::string& path) {
    @autoreleasepool {
        [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ fileUrl(path) ]];
    }
}

}  // namespace kestrune
