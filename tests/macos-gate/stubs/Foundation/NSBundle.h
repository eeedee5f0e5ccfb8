// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/bundle
@interface NSBundle : NSObject
// developer.apple.com/documentation/foundation/bundle/main
@property(class, readonly, strong) NSBundle* mainBundle;
// developer.apple.com/documentation/foundation/bundle/bundleidentifier
@property(nullable, readonly, copy) NSString* bundleIdentifier;
// developer.apple.com/documentation/foundation/bundle/executableurl
@property(nullable, readonly, copy) NSURL* executableURL API_AVAILABLE(macos(10.6));
// developer.apple.com/documentation/foundation/bundle/resourceurl
@property(nullable, readonly, copy) NSURL* resourceURL API_AVAILABLE(macos(10.6));
// developer.apple.com/documentation/foundation/bundle/object(forinfodictionarykey:)
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end
NS_ASSUME_NONNULL_END
