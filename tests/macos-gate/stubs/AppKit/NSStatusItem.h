// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSButton.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSStatusItem : NSObject
@property(nullable, strong) NSMenu* menu;
@property(nullable, readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
@end
NS_ASSUME_NONNULL_END
