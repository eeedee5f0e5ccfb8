// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSStatusItem.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsstatusitem/variablelength
FOUNDATION_EXPORT const CGFloat NSVariableStatusItemLength;

// developer.apple.com/documentation/appkit/nsstatusbar
@interface NSStatusBar : NSObject
// developer.apple.com/documentation/appkit/nsstatusbar/system
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
// developer.apple.com/documentation/appkit/nsstatusbar/statusitem(withlength:)
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
// developer.apple.com/documentation/appkit/nsstatusbar/removestatusitem(_:)
- (void)removeStatusItem:(NSStatusItem*)item;
@end
NS_ASSUME_NONNULL_END
