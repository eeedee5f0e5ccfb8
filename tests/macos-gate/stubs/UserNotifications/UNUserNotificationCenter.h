// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/Foundation.h>
#import <UserNotifications/UNNotificationRequest.h>
#import <UserNotifications/UNNotificationSettings.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/usernotifications/unauthorizationoptions
// values: learn.microsoft.com/en-us/dotnet/api/usernotifications.unauthorizationoptions
typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) {
    UNAuthorizationOptionSound = (1 << 1),
    UNAuthorizationOptionAlert = (1 << 2),
} API_AVAILABLE(macos(10.14));

// developer.apple.com/documentation/usernotifications/unnotificationpresentationoptions
// values: learn.microsoft.com/en-us/dotnet/api/usernotifications.unnotificationpresentationoptions
typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) {
    // developer.apple.com/documentation/usernotifications/unnotificationpresentationoptions/sound
    UNNotificationPresentationOptionSound = (1 << 1),
    // developer.apple.com/documentation/usernotifications/unnotificationpresentationoptions/banner
    UNNotificationPresentationOptionBanner API_AVAILABLE(macos(11.0)) = (1 << 4),
} API_AVAILABLE(macos(10.14));

@class UNUserNotificationCenter;

// developer.apple.com/documentation/usernotifications/unusernotificationcenterdelegate
API_AVAILABLE(macos(10.14))
@protocol UNUserNotificationCenterDelegate <NSObject>
// Optional in the real header; @required here so that a mistyped selector is reported.
@required
// developer.apple.com/documentation/usernotifications/unusernotificationcenterdelegate/
//   usernotificationcenter(_:willpresent:withcompletionhandler:)
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
@end

// developer.apple.com/documentation/usernotifications/unusernotificationcenter
API_AVAILABLE(macos(10.14))
@interface UNUserNotificationCenter : NSObject
// developer.apple.com/documentation/usernotifications/unusernotificationcenter/delegate
@property(weak, nullable) id<UNUserNotificationCenterDelegate> delegate;
// developer.apple.com/documentation/usernotifications/unusernotificationcenter/current()
+ (UNUserNotificationCenter*)currentNotificationCenter;
// developer.apple.com/documentation/usernotifications/unusernotificationcenter: the shared object is the only one
- (instancetype)init NS_UNAVAILABLE;
// developer.apple.com/documentation/usernotifications/unusernotificationcenter/
//   requestauthorization(options:completionhandler:)
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* _Nullable error))completionHandler;
// developer.apple.com/documentation/usernotifications/unusernotificationcenter/
//   getnotificationsettings(completionhandler:)
- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings* settings))completionHandler;
// developer.apple.com/documentation/usernotifications/unusernotificationcenter/add(_:withcompletionhandler:)
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(nullable void (^)(NSError* _Nullable error))completionHandler;
@end

NS_ASSUME_NONNULL_END
