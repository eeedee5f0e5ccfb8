// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/operationqueue
@interface NSOperationQueue : NSObject
// developer.apple.com/documentation/foundation/operationqueue/main
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end
NS_ASSUME_NONNULL_END
