// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/nsuuid
@interface NSUUID : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/foundation/nsuuid/uuid
+ (instancetype)UUID;
// developer.apple.com/documentation/foundation/nsuuid/uuidstring
@property(readonly, copy) NSString* UUIDString;
@end

NS_ASSUME_NONNULL_END
