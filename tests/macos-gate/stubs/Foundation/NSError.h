// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/foundation/nserror
@interface NSError : NSObject <NSCopying>
// developer.apple.com/documentation/foundation/nserror/domain
@property(readonly, copy) NSString* domain;
// developer.apple.com/documentation/foundation/nserror/code
@property(readonly) NSInteger code;
// developer.apple.com/documentation/foundation/nserror/localizeddescription
@property(readonly, copy) NSString* localizedDescription;
@end
NS_ASSUME_NONNULL_END
