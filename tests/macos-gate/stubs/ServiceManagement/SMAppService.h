// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/servicemanagement/smappservice/status-swift.enum
typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound,
} API_AVAILABLE(macos(13.0));

// developer.apple.com/documentation/servicemanagement/smappservice
API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
// developer.apple.com/documentation/servicemanagement/smappservice/mainapp
@property(class, readonly) SMAppService* mainAppService;
// developer.apple.com/documentation/servicemanagement/smappservice/status-swift.property
@property(readonly) SMAppServiceStatus status;
// developer.apple.com/documentation/servicemanagement/smappservice/register()
- (BOOL)registerAndReturnError:(NSError* _Nullable __autoreleasing* _Nullable)error;
// developer.apple.com/documentation/servicemanagement/smappservice/unregister()
- (BOOL)unregisterAndReturnError:(NSError* _Nullable __autoreleasing* _Nullable)error;
@end

NS_ASSUME_NONNULL_END
