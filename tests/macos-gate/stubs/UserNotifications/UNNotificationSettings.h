// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/usernotifications/unauthorizationstatus
typedef NS_ENUM(NSInteger, UNAuthorizationStatus) {
    UNAuthorizationStatusNotDetermined = 0,
    UNAuthorizationStatusDenied,
    UNAuthorizationStatusAuthorized,
    UNAuthorizationStatusProvisional,
    // developer.apple.com/documentation/usernotifications/unauthorizationstatus/ephemeral
    UNAuthorizationStatusEphemeral API_UNAVAILABLE(macos),
} API_AVAILABLE(macos(10.14));

// developer.apple.com/documentation/usernotifications/unnotificationsettings
API_AVAILABLE(macos(10.14))
@interface UNNotificationSettings : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/usernotifications/unnotificationsettings/authorizationstatus
@property(readonly) UNAuthorizationStatus authorizationStatus;
@end

NS_ASSUME_NONNULL_END
