// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/nsvalue
@interface NSValue : NSObject <NSCopying, NSSecureCoding>
@end

// developer.apple.com/documentation/foundation/nsnumber/longvalue, of the class
@interface NSNumber : NSValue
// developer.apple.com/documentation/foundation/nsnumber/boolvalue
@property(readonly) BOOL boolValue;
// developer.apple.com/documentation/foundation/nsnumber/doublevalue
@property(readonly) double doubleValue;
// developer.apple.com/documentation/foundation/nsnumber/longlongvalue
//   (page not seen; pub.dev/documentation/maplibre_ios/latest/objective_c/NSNumber$Methods/longLongValue.html)
@property(readonly) long long longLongValue;
// developer.apple.com/documentation/foundation/nsnumber/isequal(to:)
- (BOOL)isEqualToNumber:(NSNumber*)number;
// developer.apple.com/documentation/foundation/nsnumber/numberwithbool:
+ (NSNumber*)numberWithBool:(BOOL)value;
// developer.apple.com/documentation/foundation/nsnumber/numberwithdouble:
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/foundation.nsnumber.fromdouble)
+ (NSNumber*)numberWithDouble:(double)value;
// developer.apple.com/documentation/foundation/nsnumber/numberwithlonglong:
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/foundation.nsnumber.fromint64)
+ (NSNumber*)numberWithLongLong:(long long)value;
@end
NS_ASSUME_NONNULL_END
