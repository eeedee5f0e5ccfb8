// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSData : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes NS_RETURNS_INNER_POINTER;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end
NS_ASSUME_NONNULL_END
