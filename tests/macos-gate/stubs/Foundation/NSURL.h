// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NSString* NSURLResourceKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeTotalCapacityKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeAvailableCapacityKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLTotalFileAllocatedSizeKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLFileAllocatedSizeKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLIsDirectoryKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLIsSymbolicLinkKey;

@interface NSURL : NSObject <NSCopying>
+ (NSURL*)fileURLWithPath:(NSString*)path;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDir;
@property(nullable, readonly, copy) NSString* path;
- (BOOL)getResourceValue:(id _Nullable* _Nonnull)value
                  forKey:(NSURLResourceKey)key
                   error:(NSError* _Nullable* _Nullable)error;
- (nullable NSDictionary<NSURLResourceKey, id>*)resourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys
                                                                error:(NSError* _Nullable* _Nullable)error;
@end
NS_ASSUME_NONNULL_END
