// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSRunningApplication.h>

NS_ASSUME_NONNULL_BEGIN
FOUNDATION_EXPORT NSNotificationName NSWorkspaceDidActivateApplicationNotification;
FOUNDATION_EXPORT NSString* const NSWorkspaceApplicationKey;
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication;
// developer.apple.com/documentation/appkit/nsworkspace/open(_:)
- (BOOL)openURL:(NSURL*)url;
// developer.apple.com/documentation/appkit/nsworkspace/activatefileviewerselecting(_:)
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)fileURLs;
@end
NS_ASSUME_NONNULL_END
