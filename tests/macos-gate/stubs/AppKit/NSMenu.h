// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSMenuItem.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsmenudelegate
@protocol NSMenuDelegate <NSObject>
// Optional in the real header; @required here so that a mistyped selector is reported.
@required
// developer.apple.com/documentation/appkit/nsmenudelegate/menuneedsupdate(_:)
- (void)menuNeedsUpdate:(NSMenu*)menu;
// developer.apple.com/documentation/appkit/nsmenudelegate/menuwillopen(_:)
- (void)menuWillOpen:(NSMenu*)menu;
// developer.apple.com/documentation/appkit/nsmenudelegate/menudidclose(_:)
- (void)menuDidClose:(NSMenu*)menu;
@end

// developer.apple.com/documentation/appkit/nsmenu (page not seen; learn.microsoft.com/en-us/dotnet/api/appkit.nsmenu)
@interface NSMenu : NSObject
// developer.apple.com/documentation/appkit/nsmenu/init(title:)
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
// developer.apple.com/documentation/appkit/nsmenu/autoenablesitems
@property BOOL autoenablesItems;
// developer.apple.com/documentation/appkit/nsmenu/delegate
@property(nullable, weak) id<NSMenuDelegate> delegate;
// developer.apple.com/documentation/appkit/nsmenu/additem(_:)
- (void)addItem:(NSMenuItem*)newItem;
// developer.apple.com/documentation/appkit/nsmenu/removeallitems()
- (void)removeAllItems;
// developer.apple.com/documentation/appkit/nsmenu/item(at:)
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
@end
NS_ASSUME_NONNULL_END
