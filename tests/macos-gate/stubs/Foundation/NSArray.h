// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/nsarray
@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
// developer.apple.com/documentation/foundation/nsarray/count
//   (page not seen; pub.dev/documentation/maplibre_ios/latest/objective_c/NSArray$Methods.html)
@property(readonly) NSUInteger count;
// developer.apple.com/documentation/foundation/nsarray/subscript(_:)
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)idx;
// developer.apple.com/documentation/foundation/nsarray/init(objects:count:)-7dct1
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)cnt;
@end
NS_ASSUME_NONNULL_END
