// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/filemanager
@interface NSFileManager : NSObject
// developer.apple.com/documentation/foundation/filemanager/default
@property(class, readonly, strong) NSFileManager* defaultManager;
// developer.apple.com/documentation/foundation/filemanager/trashitem(at:resultingitemurl:)
- (BOOL)trashItemAtURL:(NSURL*)url
      resultingItemURL:(NSURL* _Nullable __autoreleasing* _Nullable)outResultingURL
                 error:(NSError* _Nullable* _Nullable)error API_AVAILABLE(macos(10.8));
@end
NS_ASSUME_NONNULL_END
