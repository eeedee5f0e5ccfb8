// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSDockTile : NSObject
@property(nullable, copy) NSString* badgeLabel;
@end
NS_ASSUME_NONNULL_END
