// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSString* executablePath;
@end
NS_ASSUME_NONNULL_END
