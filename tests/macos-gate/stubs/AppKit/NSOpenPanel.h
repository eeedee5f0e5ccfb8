// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nswindow
//   (page not seen; pub.dev/documentation/cocoa/latest/native_binding_bindings_generated/NSOpenPanel-class.html)
@interface NSWindow : NSResponder
@end

// developer.apple.com/documentation/appkit/nspanel
//   (page not seen; pub.dev/documentation/cocoa/latest/native_binding_bindings_generated/NSOpenPanel-class.html)
@interface NSPanel : NSWindow
@end

// developer.apple.com/documentation/appkit/nssavepanel
@interface NSSavePanel : NSPanel
// developer.apple.com/documentation/appkit/nssavepanel/message
@property(null_resettable, copy) NSString* message;
@end

// developer.apple.com/documentation/appkit/nsopenpanel
@interface NSOpenPanel : NSSavePanel
@end
NS_ASSUME_NONNULL_END
