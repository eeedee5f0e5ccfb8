#include "platform/macos/MacLinkOpener.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/LinkRules.h"
#include "platform/macos/MacText.h"

namespace kestrune {

MacLinkOpener::MacLinkOpener(std::string helpFolder) : m_helpFolder(std::move(helpFolder)) {
}

bool MacLinkOpener::open(const std::string& address) {
    @autoreleasepool {
        NSURL* url = nil;
        if (LinkRules::isWebAddress(address)) {
            url = [NSURL URLWithString:toNs(address)];
        } else if (const auto page = LinkRules::helpPage(m_helpFolder, address)) {
            url = fileUrl(*page);
        }
        return url != nil && [NSWorkspace.sharedWorkspace openURL:url];
    }
}

}  // namespace kestrune
