// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NSString* NSNotificationName;
@interface NSNotification : NSObject <NSCopying>
@property(readonly, copy) NSNotificationName name;
@property(nullable, readonly, retain) id object;
@property(nullable, readonly, copy) NSDictionary* userInfo;
@end
@class NSOperationQueue;
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)obj
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* note))block;
// developer.apple.com/documentation/foundation/notificationcenter/addobserver(_:selector:name:object:)
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(nullable NSNotificationName)aName
             object:(nullable id)anObject;
- (void)removeObserver:(id)observer;
@end
NS_ASSUME_NONNULL_END
