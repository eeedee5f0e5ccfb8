// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/corefoundation/cgfloat-c.typealias
typedef double CGFloat;

@class NSApplication, NSButton, NSImage, NSMenu, NSMenuItem, NSRunningApplication, NSStatusBar, NSStatusBarButton;
@class NSStatusItem, NSView, NSWindow, NSWorkspace;
NS_ASSUME_NONNULL_END
