// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/nsnotification/name-swift.struct
//   (page not seen; docs.rs/objc2-foundation/latest/objc2_foundation/type.NSNotificationName.html)
typedef NSString* NSNotificationName;
@class NSOperationQueue;

// developer.apple.com/documentation/foundation/nsnotification
@interface NSNotification : NSObject <NSCopying>
// developer.apple.com/documentation/foundation/nsnotification/userinfo
@property(nullable, readonly, copy) NSDictionary* userInfo;
@end

// developer.apple.com/documentation/foundation/notificationcenter
@interface NSNotificationCenter : NSObject
// developer.apple.com/documentation/foundation/notificationcenter/addobserver(forname:object:queue:using:)
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)obj
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* note))block;
// developer.apple.com/documentation/foundation/notificationcenter/addobserver(_:selector:name:object:)
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(nullable NSNotificationName)aName
             object:(nullable id)anObject;
// developer.apple.com/documentation/foundation/notificationcenter/removeobserver(_:)-2yciv
- (void)removeObserver:(id)observer;
@end
NS_ASSUME_NONNULL_END
