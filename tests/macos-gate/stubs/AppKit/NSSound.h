// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NSString* NSSoundName;
@interface NSSound : NSObject
+ (nullable NSSound*)soundNamed:(NSSoundName)name;
- (BOOL)play;
@end
FOUNDATION_EXPORT void NSBeep(void);
NS_ASSUME_NONNULL_END
