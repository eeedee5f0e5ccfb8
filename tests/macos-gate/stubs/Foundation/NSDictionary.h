// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/nsdictionary
@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
// developer.apple.com/documentation/foundation/nsdictionary/subscript(_:)-52n56
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
// developer.apple.com/documentation/foundation/nsdictionary/dictionarywithobjects:forkeys:count:
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
@end
NS_ASSUME_NONNULL_END
