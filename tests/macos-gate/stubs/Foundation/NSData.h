// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/nsdata
@interface NSData : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/foundation/nsdata/length
//   (page not seen; pub.dev/documentation/cupertino_http/latest/cupertino_http/Data/length.html)
@property(readonly) NSUInteger length;
// developer.apple.com/documentation/foundation/nsdata/bytes
@property(readonly) const void* bytes NS_RETURNS_INNER_POINTER;
// developer.apple.com/documentation/foundation/nsdata/datawithbytes:length:
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end

NS_ASSUME_NONNULL_END
