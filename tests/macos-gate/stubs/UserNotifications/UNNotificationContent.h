// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/usernotifications/unnotificationsound
API_AVAILABLE(macos(10.14))
@interface UNNotificationSound : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/usernotifications/unnotificationsound/default
@property(class, copy, readonly) UNNotificationSound* defaultSound;
@end

// developer.apple.com/documentation/usernotifications/unnotificationcontent
API_AVAILABLE(macos(10.14))
@interface UNNotificationContent : NSObject <NSCopying, NSSecureCoding>
@end

// developer.apple.com/documentation/usernotifications/unmutablenotificationcontent
API_AVAILABLE(macos(10.14))
@interface UNMutableNotificationContent : UNNotificationContent
// developer.apple.com/documentation/usernotifications/unmutablenotificationcontent/title
@property(copy) NSString* title;
// developer.apple.com/documentation/usernotifications/unmutablenotificationcontent/body
@property(copy) NSString* body;
// developer.apple.com/documentation/usernotifications/unmutablenotificationcontent/sound
@property(copy, nullable) UNNotificationSound* sound;
@end

NS_ASSUME_NONNULL_END
