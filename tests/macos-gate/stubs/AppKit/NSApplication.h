// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSDockTile.h>
#import <AppKit/NSRunningApplication.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN
typedef NS_ENUM(NSUInteger, NSApplicationTerminateReply) {
    NSTerminateCancel = 0,
    NSTerminateNow = 1,
    NSTerminateLater = 2,
};

@protocol NSApplicationDelegate <NSObject>
// Optional in the real header; @required here so that a mistyped selector is reported.
@required
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag;
@end
@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(readonly, strong) NSDockTile* dockTile;
- (NSApplicationActivationPolicy)activationPolicy;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (void)terminate:(nullable id)sender;
@end
FOUNDATION_EXPORT __kindof NSApplication* _Null_unspecified NSApp;
NS_ASSUME_NONNULL_END
