// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSRunningApplication.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsworkspace/didactivateapplicationnotification
FOUNDATION_EXPORT NSNotificationName NSWorkspaceDidActivateApplicationNotification;
// developer.apple.com/documentation/appkit/nsworkspace/applicationuserinfokey
FOUNDATION_EXPORT NSString* const NSWorkspaceApplicationKey;
// developer.apple.com/documentation/appkit/nsworkspace
@interface NSWorkspace : NSObject
// developer.apple.com/documentation/appkit/nsworkspace/shared
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
// developer.apple.com/documentation/appkit/nsworkspace/notificationcenter
@property(readonly, strong) NSNotificationCenter* notificationCenter;
// developer.apple.com/documentation/appkit/nsworkspace/runningapplications
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
// developer.apple.com/documentation/appkit/nsworkspace/frontmostapplication
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication;
// developer.apple.com/documentation/appkit/nsworkspace/open(_:)
- (BOOL)openURL:(NSURL*)url;
// developer.apple.com/documentation/appkit/nsworkspace/activatefileviewerselecting(_:)
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)fileURLs;
@end
NS_ASSUME_NONNULL_END
