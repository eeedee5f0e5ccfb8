// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSButton.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsstatusitem
@interface NSStatusItem : NSObject
// developer.apple.com/documentation/appkit/nsstatusitem/menu
@property(nullable, strong) NSMenu* menu;
// developer.apple.com/documentation/appkit/nsstatusitem/button
@property(nullable, readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
// developer.apple.com/documentation/appkit/nsstatusitem/isvisible
@property(getter=isVisible) BOOL visible API_AVAILABLE(macos(10.12));
@end
NS_ASSUME_NONNULL_END
