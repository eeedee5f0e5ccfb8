// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSDate : NSObject <NSCopying>
@property(readonly) NSTimeInterval timeIntervalSince1970;
+ (instancetype)date;
@end
NS_ASSUME_NONNULL_END
