// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSWorkspace.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsworkspace/accessibilitydisplayoptionsdidchangenotification
FOUNDATION_EXPORT NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
    API_AVAILABLE(macos(10.10));

@interface NSWorkspace (NSWorkspaceAccessibilityDisplay)
// developer.apple.com/documentation/appkit/nsworkspace/accessibilitydisplayshouldreducemotion
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion API_AVAILABLE(macos(10.12));
@end
NS_ASSUME_NONNULL_END
