#include "platform/macos/MacNotificationCenter.h"

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include <utility>

#include "platform/macos/MacText.h"

/// Answers the system that a notification is to be shown although the program is in front.
@interface NotificationPresenter : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation NotificationPresenter

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler {
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionSound);
}

@end

namespace kestrune {

namespace {

NotificationAuthorization authorizationOf(UNAuthorizationStatus status) {
    switch (status) {
        case UNAuthorizationStatusAuthorized:
            return NotificationAuthorization::authorized;
        case UNAuthorizationStatusProvisional:
            return NotificationAuthorization::provisional;
        case UNAuthorizationStatusNotDetermined:
            return NotificationAuthorization::notDetermined;
        default:  // denied; on this system nothing is ephemeral
            return NotificationAuthorization::denied;
    }
}

}  // namespace

struct MacNotificationCenter::Objects {
    UNUserNotificationCenter* _Nullable center = nil;  ///< nothing without a bundle identifier
    NotificationPresenter* _Nullable presenter = nil;  ///< the center does not keep it
};

MacNotificationCenter::MacNotificationCenter() : m_objects(std::make_shared<Objects>()) {
    @autoreleasepool {
        if (NSBundle.mainBundle.bundleIdentifier != nil) {
            m_objects->presenter = [[NotificationPresenter alloc] init];
            m_objects->center = [UNUserNotificationCenter currentNotificationCenter];
            m_objects->center.delegate = m_objects->presenter;
        }
    }
}

MacNotificationCenter::~MacNotificationCenter() = default;

bool MacNotificationCenter::hasIdentity() const {
    return m_objects->center != nil;
}

template <typename Value>
void MacNotificationCenter::post(std::weak_ptr<Objects> objects, std::function<void(Value)> answer, Value value) {
    dispatch_async(dispatch_get_main_queue(), ^{
      if (!objects.expired()) {
          answer(value);
      }
    });
}

void MacNotificationCenter::queryAuthorization(std::function<void(NotificationAuthorization)> answer) {
    const std::weak_ptr<Objects> objects = m_objects;
    if (m_objects->center == nil) {
        post(objects, std::move(answer), NotificationAuthorization::denied);
        return;
    }
    [m_objects->center getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
      post(objects, answer, authorizationOf(settings.authorizationStatus));
    }];
}

void MacNotificationCenter::requestAuthorization(std::function<void(bool granted)> answer) {
    const std::weak_ptr<Objects> objects = m_objects;
    if (m_objects->center == nil) {
        post(objects, std::move(answer), false);
        return;
    }
    [m_objects->center requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                                     completionHandler:^(BOOL granted, NSError*) {
                                       post(objects, answer, granted == YES);
                                     }];
}

void MacNotificationCenter::deliver(const std::string& title, const std::string& body) {
    @autoreleasepool {
        if (m_objects->center == nil) {
            return;
        }
        UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
        content.title = toNs(title);
        content.body = toNs(body);
        content.sound = UNNotificationSound.defaultSound;
        // A name of its own, so that no notification takes the place of another; no trigger, so that it shows at once.
        [m_objects->center addNotificationRequest:[UNNotificationRequest requestWithIdentifier:NSUUID.UUID.UUIDString
                                                                                       content:content
                                                                                       trigger:nil]
                            withCompletionHandler:nil];
    }
}

bool MacNotificationCenter::playSound(const std::string& name) {
    @autoreleasepool {
        NSSound* sound = [NSSound soundNamed:toNs(name)];
        // One that plays already would refuse to.
        [sound stop];
        return [sound play] == YES;
    }
}

void MacNotificationCenter::beep() {
    NSBeep();
}

}  // namespace kestrune
