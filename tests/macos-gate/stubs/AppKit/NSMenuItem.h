// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) { NSEventModifierFlagCommand = 1 << 20 };

@interface NSMenuItem : NSObject <NSCopying>
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
@property(copy) NSString* title;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(nullable, copy) NSString* toolTip;
@property(getter=isEnabled) BOOL enabled;
@property(getter=isHidden) BOOL hidden;
@property NSControlStateValue state;
@property NSInteger tag;
@property(nullable, strong) NSMenu* submenu;
@property(getter=isSeparatorItem, readonly) BOOL separatorItem;
@end
NS_ASSUME_NONNULL_END
