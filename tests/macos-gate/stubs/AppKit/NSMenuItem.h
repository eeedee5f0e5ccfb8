// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nscontrol/statevalue (page not seen)
typedef NSInteger NSControlStateValue;
// developer.apple.com/documentation/appkit/nscontrol/statevalue/off (page not seen)
static const NSControlStateValue NSControlStateValueOff = 0;
// developer.apple.com/documentation/appkit/nscontrol/statevalue/on (page not seen)
static const NSControlStateValue NSControlStateValueOn = 1;
// developer.apple.com/documentation/appkit/nsevent/modifierflags/command (page not seen)
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) { NSEventModifierFlagCommand = 1 << 20 };

// developer.apple.com/documentation/appkit/nsmenuitem
@interface NSMenuItem : NSObject <NSCopying>
// developer.apple.com/documentation/appkit/nsmenuitem/separator()
+ (NSMenuItem*)separatorItem;
// developer.apple.com/documentation/appkit/nsmenuitem/init(title:action:keyequivalent:)
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
// developer.apple.com/documentation/appkit/nsmenuitem/title (page not seen)
@property(copy) NSString* title;
// developer.apple.com/documentation/appkit/nsmenuitem/target (page not seen)
@property(nullable, weak) id target;
// developer.apple.com/documentation/appkit/nsmenuitem/tooltip (page not seen)
@property(nullable, copy) NSString* toolTip;
// developer.apple.com/documentation/appkit/nsmenuitem/isenabled
@property(getter=isEnabled) BOOL enabled;
// developer.apple.com/documentation/appkit/nsmenuitem/ishidden
@property(getter=isHidden) BOOL hidden;
// developer.apple.com/documentation/appkit/nsmenuitem/state (page not seen)
@property NSControlStateValue state;
// developer.apple.com/documentation/appkit/nsmenuitem/tag (page not seen)
@property NSInteger tag;
// developer.apple.com/documentation/appkit/nsmenuitem/submenu (page not seen)
@property(nullable, strong) NSMenu* submenu;
// developer.apple.com/documentation/appkit/nsmenuitem/keyequivalentmodifiermask
@property NSEventModifierFlags keyEquivalentModifierMask;
@end
NS_ASSUME_NONNULL_END
