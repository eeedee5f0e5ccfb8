// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NS_ENUM(NSInteger, NSByteCountFormatterCountStyle) { NSByteCountFormatterCountStyleFile = 0 };
@interface NSByteCountFormatter : NSObject
+ (NSString*)stringFromByteCount:(long long)byteCount countStyle:(NSByteCountFormatterCountStyle)countStyle;
@end
NS_ASSUME_NONNULL_END
