// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/appkit/nssound/name-swift.typealias
typedef NSString* NSSoundName;

// developer.apple.com/documentation/appkit/nssound
@interface NSSound : NSObject <NSCopying>
// developer.apple.com/documentation/appkit/nssound/init(named:)
+ (nullable NSSound*)soundNamed:(NSSoundName)name;
// developer.apple.com/documentation/appkit/nssound/play()
- (BOOL)play;
// developer.apple.com/documentation/appkit/nssound/stop()
- (BOOL)stop;
@end

// developer.apple.com/documentation/appkit/nsbeep
FOUNDATION_EXPORT void NSBeep(void);

NS_ASSUME_NONNULL_END
