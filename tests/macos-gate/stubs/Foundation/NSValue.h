// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSValue : NSObject <NSCopying>
@end
@interface NSNumber : NSValue
@property(readonly) int intValue;
@property(readonly) BOOL boolValue;
@property(readonly) double doubleValue;
@property(readonly) long long longLongValue;
@property(readonly) unsigned long long unsignedLongLongValue;
@property(readonly) NSInteger integerValue;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)value;
@end
NS_ASSUME_NONNULL_END
