// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};

// developer.apple.com/documentation/appkit/nsapplication/activationoptions
typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    // developer.apple.com/documentation/appkit/nsapplication/activationoptions/activateallwindows
    NSApplicationActivateAllWindows = 1 << 0,
};

@interface NSRunningApplication : NSObject
// developer.apple.com/documentation/appkit/nsrunningapplication/init(processidentifier:)
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
// developer.apple.com/documentation/appkit/nsrunningapplication/activate(options:)
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@property(class, readonly, strong) NSRunningApplication* currentApplication;
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSURL* bundleURL;
@property(readonly) pid_t processIdentifier;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(readonly, getter=isTerminated) BOOL terminated;
- (BOOL)terminate;
- (BOOL)forceTerminate;
@end
NS_ASSUME_NONNULL_END
