// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/NSArray.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/nslocale
@interface NSLocale : NSObject <NSCopying>
// developer.apple.com/documentation/foundation/nslocale/preferredlanguages
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages API_AVAILABLE(macos(10.5));
@end
NS_ASSUME_NONNULL_END
