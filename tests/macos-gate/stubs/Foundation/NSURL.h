// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/urlresourcekey
typedef NSString* NSURLResourceKey;
// developer.apple.com/documentation/foundation/urlresourcekey/volumetotalcapacitykey
FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeTotalCapacityKey;
// developer.apple.com/documentation/foundation/urlresourcekey/volumeavailablecapacitykey
//   (page not seen; docs.rs/objc2-foundation/latest/objc2_foundation/static.NSURLVolumeAvailableCapacityKey.html)
FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeAvailableCapacityKey;

// developer.apple.com/documentation/foundation/nsurl
@interface NSURL : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/foundation/nsurl/urlwithstring:
+ (nullable instancetype)URLWithString:(NSString*)URLString;
// developer.apple.com/documentation/foundation/nsurl/fileurl(withfilesystemrepresentation:isdirectory:relativeto:)
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path
                                  isDirectory:(BOOL)isDir
                                relativeToURL:(nullable NSURL*)baseURL API_AVAILABLE(macos(10.9));
// developer.apple.com/documentation/foundation/nsurl/getfilesystemrepresentation(_:maxlength:)
- (BOOL)getFileSystemRepresentation:(char*)buffer maxLength:(NSUInteger)maxBufferLength API_AVAILABLE(macos(10.9));
// developer.apple.com/documentation/foundation/nsurl/resourcevalues(forkeys:)
- (nullable NSDictionary<NSURLResourceKey, id>*)resourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys
                                                                error:(NSError* _Nullable* _Nullable)error;
@end

NS_ASSUME_NONNULL_END
