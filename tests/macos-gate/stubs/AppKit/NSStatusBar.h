// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSStatusItem.h>

NS_ASSUME_NONNULL_BEGIN
FOUNDATION_EXPORT const CGFloat NSVariableStatusItemLength;
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end
NS_ASSUME_NONNULL_END
