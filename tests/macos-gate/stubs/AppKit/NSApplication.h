// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSDockTile.h>
#import <AppKit/NSOpenPanel.h>
#import <AppKit/NSRunningApplication.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsapplicationdelegate
@protocol NSApplicationDelegate <NSObject>
// Optional in the real header; @required here so that a mistyped selector is reported.
@required
// developer.apple.com/documentation/appkit/nsapplicationdelegate/applicationshouldhandlereopen(_:hasvisiblewindows:)
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
@end

// developer.apple.com/documentation/appkit/nsapplication
@interface NSApplication : NSResponder
// developer.apple.com/documentation/appkit/nsapplication/shared
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
// developer.apple.com/documentation/appkit/nsapplication/delegate
@property(nullable, weak) id<NSApplicationDelegate> delegate;
// developer.apple.com/documentation/appkit/nsapplication/docktile
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/appkit.nsapplication.docktile)
@property(readonly, strong) NSDockTile* dockTile;
// developer.apple.com/documentation/appkit/nsapplication/windows
@property(readonly, copy) NSArray<NSWindow*>* windows;
// developer.apple.com/documentation/appkit/nsapplication/setactivationpolicy(_:)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
// developer.apple.com/documentation/appkit/nsapplication/activate(ignoringotherapps:)
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
@end
NS_ASSUME_NONNULL_END
