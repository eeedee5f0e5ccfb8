// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSControl : NSView
@end
@interface NSButton : NSControl
@property(copy) NSString* title;
@end
@interface NSStatusBarButton : NSButton
@end
NS_ASSUME_NONNULL_END
