// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/NSArray.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/runloop/mode
//   (page not seen; docs.rs/objc2-foundation/latest/objc2_foundation/static.NSDefaultRunLoopMode.html)
typedef NSString* NSRunLoopMode;
// developer.apple.com/documentation/foundation/runloop/mode/default
FOUNDATION_EXPORT NSRunLoopMode const NSDefaultRunLoopMode;

// developer.apple.com/documentation/foundation/runloop
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/foundation.nsrunloop)
@interface NSRunLoop : NSObject
// developer.apple.com/documentation/foundation/runloop/main
@property(class, readonly, strong) NSRunLoop* mainRunLoop API_AVAILABLE(macos(10.5));
// developer.apple.com/documentation/foundation/runloop/perform(inmodes:block:)
- (void)performInModes:(NSArray<NSRunLoopMode>*)modes block:(void (^)(void))block API_AVAILABLE(macos(10.12));
@end
NS_ASSUME_NONNULL_END
