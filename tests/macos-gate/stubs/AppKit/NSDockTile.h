// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsdocktile
@interface NSDockTile : NSObject
// developer.apple.com/documentation/appkit/nsdocktile/badgelabel
@property(nullable, copy) NSString* badgeLabel;
@end
NS_ASSUME_NONNULL_END
