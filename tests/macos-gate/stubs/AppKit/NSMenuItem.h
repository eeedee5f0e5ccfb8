// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nscontrol/statevalue
typedef NSInteger NSControlStateValue;
// developer.apple.com/documentation/appkit/nscontrol/statevalue/off
// value: oreilly.com/library/view/cocoa-in-a/0596004621/re95.html
static const NSControlStateValue NSControlStateValueOff = 0;
// developer.apple.com/documentation/appkit/nscontrol/statevalue/on
// value: oreilly.com/library/view/cocoa-in-a/0596004621/re95.html
static const NSControlStateValue NSControlStateValueOn = 1;
// developer.apple.com/documentation/appkit/nsevent/modifierflags-swift.struct/command
// value: learn.microsoft.com/en-us/dotnet/api/appkit.nseventmodifierflags
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) { NSEventModifierFlagCommand = 1 << 20 };

// developer.apple.com/documentation/appkit/nsmenuitem
@interface NSMenuItem : NSObject <NSCopying>
// developer.apple.com/documentation/appkit/nsmenuitem/separator()
+ (NSMenuItem*)separatorItem;
// developer.apple.com/documentation/appkit/nsmenuitem/init(title:action:keyequivalent:)
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
// developer.apple.com/documentation/appkit/nsmenuitem/title
@property(copy) NSString* title;
// developer.apple.com/documentation/appkit/nsmenuitem/target
@property(nullable, weak) id target;
// developer.apple.com/documentation/appkit/nsmenuitem/tooltip
@property(nullable, copy) NSString* toolTip;
// developer.apple.com/documentation/appkit/nsmenuitem/isenabled
@property(getter=isEnabled) BOOL enabled;
// developer.apple.com/documentation/appkit/nsmenuitem/ishidden
@property(getter=isHidden) BOOL hidden;
// developer.apple.com/documentation/appkit/nsmenuitem/state
@property NSControlStateValue state;
// developer.apple.com/documentation/appkit/nsmenuitem/tag
@property NSInteger tag;
// developer.apple.com/documentation/appkit/nsmenuitem/submenu
@property(nullable, strong) NSMenu* submenu;
// developer.apple.com/documentation/appkit/nsmenuitem/keyequivalentmodifiermask
@property NSEventModifierFlags keyEquivalentModifierMask;
@end
NS_ASSUME_NONNULL_END
