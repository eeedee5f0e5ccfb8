// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/NSNotification.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/distributednotificationcenter/suspensionbehavior
typedef NS_ENUM(NSUInteger, NSNotificationSuspensionBehavior) {
    // developer.apple.com/documentation/foundation/distributednotificationcenter/suspensionbehavior/deliverimmediately
    NSNotificationSuspensionBehaviorDeliverImmediately = 4,
};

// developer.apple.com/documentation/foundation/distributednotificationcenter
@interface NSDistributedNotificationCenter : NSNotificationCenter
// developer.apple.com/documentation/foundation/distributednotificationcenter/default()
+ (NSDistributedNotificationCenter*)defaultCenter;
// developer.apple.com/documentation/foundation/distributednotificationcenter/addobserver(_:selector:name:object:suspensionbehavior:)
- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(nullable NSNotificationName)name
                object:(nullable NSString*)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)suspensionBehavior;
// developer.apple.com/documentation/foundation/distributednotificationcenter/postnotificationname(_:object:userinfo:deliverimmediately:)
- (void)postNotificationName:(NSNotificationName)name
                      object:(nullable NSString*)object
                    userInfo:(nullable NSDictionary*)userInfo
          deliverImmediately:(BOOL)deliverImmediately;
@end
NS_ASSUME_NONNULL_END
