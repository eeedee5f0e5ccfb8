// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/userdefaults
@interface NSUserDefaults : NSObject
// developer.apple.com/documentation/foundation/userdefaults/standard
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
// developer.apple.com/documentation/foundation/userdefaults/init(suitename:)
- (nullable instancetype)initWithSuiteName:(nullable NSString*)suitename API_AVAILABLE(macos(10.9))
                                               __attribute__((objc_designated_initializer));
// developer.apple.com/documentation/foundation/userdefaults/object(forkey:)
- (nullable id)objectForKey:(NSString*)defaultName;
// developer.apple.com/documentation/foundation/userdefaults/set(_:forkey:)-8ab6d
- (void)setObject:(nullable id)value forKey:(NSString*)defaultName;
// developer.apple.com/documentation/foundation/userdefaults/synchronize()
- (BOOL)synchronize;
@end

NS_ASSUME_NONNULL_END
