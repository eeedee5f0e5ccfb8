// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

@class NSData;

// developer.apple.com/documentation/foundation/nsstringencoding
typedef NSUInteger NSStringEncoding;

enum : NSStringEncoding {
    // developer.apple.com/documentation/foundation/nsutf8stringencoding
    // value: docs.rs/objc2-foundation/0.2.0/objc2_foundation/constant.NSUTF8StringEncoding.html
    NSUTF8StringEncoding = 4
};

// developer.apple.com/documentation/foundation/nsstring
@interface NSString : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/foundation/nsstring/init(bytes:length:encoding:)
- (nullable instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
// developer.apple.com/documentation/foundation/nsstring/isequal(to:)
- (BOOL)isEqualToString:(NSString*)other;
// developer.apple.com/documentation/foundation/nsstring/data(using:allowlossyconversion:)
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
@end

NS_ASSUME_NONNULL_END
