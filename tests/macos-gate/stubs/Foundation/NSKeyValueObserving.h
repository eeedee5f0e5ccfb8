// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN

// developer.apple.com/documentation/foundation/nskeyvalueobservingoptions
typedef NS_OPTIONS(NSUInteger, NSKeyValueObservingOptions) {
    // developer.apple.com/documentation/foundation/nskeyvalueobservingoptions/new
    NSKeyValueObservingOptionNew = 0x01,
    // developer.apple.com/documentation/foundation/nskeyvalueobservingoptions/old
    NSKeyValueObservingOptionOld = 0x02,
    // developer.apple.com/documentation/foundation/nskeyvalueobservingoptions/initial
    NSKeyValueObservingOptionInitial = 0x04,
    // developer.apple.com/documentation/foundation/nskeyvalueobservingoptions/prior
    NSKeyValueObservingOptionPrior = 0x08
};

// developer.apple.com/documentation/foundation/nskeyvaluechangekey
typedef NSString* NSKeyValueChangeKey;

// developer.apple.com/documentation/objectivec/nskeyvalueobserving
@interface NSObject (NSKeyValueObserving)
// developer.apple.com/documentation/objectivec/nsobject-swift.class/observevalue(forkeypath:of:change:context:)
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(nullable void*)context;
// developer.apple.com/documentation/objectivec/nsobject-swift.class/addobserver(_:forkeypath:options:context:)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(nullable void*)context;
// developer.apple.com/documentation/objectivec/nsobject-swift.class/removeobserver(_:forkeypath:context:)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(nullable void*)context;
@end

NS_ASSUME_NONNULL_END
