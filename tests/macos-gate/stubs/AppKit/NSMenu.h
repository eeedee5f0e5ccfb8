// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSMenuItem.h>

NS_ASSUME_NONNULL_BEGIN
@protocol NSMenuDelegate <NSObject>
// Optional in the real header; @required here so that a mistyped selector is reported.
@required
- (void)menuWillOpen:(NSMenu*)menu;
@end
@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
@property BOOL autoenablesItems;
@property(nullable, weak) id<NSMenuDelegate> delegate;
@property(copy) NSArray<NSMenuItem*>* itemArray;
- (void)addItem:(NSMenuItem*)newItem;
- (nullable NSMenuItem*)itemWithTag:(NSInteger)tag;
@end
NS_ASSUME_NONNULL_END
