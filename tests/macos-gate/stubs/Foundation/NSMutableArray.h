// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/NSArray.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/nsmutablearray
@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
// developer.apple.com/documentation/foundation/nsarray/array
+ (instancetype)array;
// developer.apple.com/documentation/foundation/nsmutablearray/add(_:)
- (void)addObject:(ObjectType)anObject;
@end

NS_ASSUME_NONNULL_END
