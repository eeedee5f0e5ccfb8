// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nscontrol
//   (page not seen; oreilly.com/library/view/cocoa-programming/0672322307/0672322307_ch10lev1sec1.html)
@interface NSControl : NSView
@end

// developer.apple.com/documentation/appkit/nsbutton
@interface NSButton : NSControl
// developer.apple.com/documentation/appkit/nsbutton/title
@property(copy) NSString* title;
@end

// developer.apple.com/documentation/appkit/nsstatusbarbutton
@interface NSStatusBarButton : NSButton
@end
NS_ASSUME_NONNULL_END
