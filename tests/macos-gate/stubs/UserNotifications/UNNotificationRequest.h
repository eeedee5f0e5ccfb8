// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/Foundation.h>
#import <UserNotifications/UNNotificationContent.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/usernotifications/unnotificationtrigger
API_AVAILABLE(macos(10.14))
@interface UNNotificationTrigger : NSObject <NSCopying, NSSecureCoding>
@end

// developer.apple.com/documentation/usernotifications/unnotificationrequest
API_AVAILABLE(macos(10.14))
@interface UNNotificationRequest : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/usernotifications/unnotificationrequest/init(identifier:content:trigger:)
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(nullable UNNotificationTrigger*)trigger;
@end

// developer.apple.com/documentation/usernotifications/unnotification
API_AVAILABLE(macos(10.14))
@interface UNNotification : NSObject <NSCopying, NSSecureCoding>
@end

NS_ASSUME_NONNULL_END
