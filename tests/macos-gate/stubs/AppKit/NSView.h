// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsresponder
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/appkit.nsresponder)
@interface NSResponder : NSObject
@end

// developer.apple.com/documentation/appkit/nsview
@interface NSView : NSResponder
// developer.apple.com/documentation/appkit/nsview/tooltip
@property(nullable, copy) NSString* toolTip;
// developer.apple.com/documentation/appkit/nsaccessibility-c.protocol/accessibilitytitle
@property(nullable, copy) NSString* accessibilityTitle API_AVAILABLE(macos(10.10));
@end
NS_ASSUME_NONNULL_END
