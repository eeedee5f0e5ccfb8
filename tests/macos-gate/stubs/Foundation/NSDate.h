// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/nsdate
@interface NSDate : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/foundation/nsdate/timeintervalsince1970
@property(readonly) NSTimeInterval timeIntervalSince1970;
// developer.apple.com/documentation/foundation/nsdate/datewithtimeintervalsince1970:
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds;
@end

NS_ASSUME_NONNULL_END
