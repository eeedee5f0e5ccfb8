// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NS_ENUM(NSUInteger, NSStringEncoding) { NSUTF8StringEncoding = 4 };
@interface NSString : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(nullable, readonly) const char* UTF8String;
@property(readonly, copy) NSString* lowercaseString;
@property(readonly, copy) NSString* lastPathComponent;
+ (nullable instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
+ (instancetype)stringWithFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
- (nullable instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)other;
@end
NS_ASSUME_NONNULL_END
