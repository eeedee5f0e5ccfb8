// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>

NS_ASSUME_NONNULL_BEGIN
// values: learn.microsoft.com/en-us/dotnet/api/appkit.nsapplicationactivationpolicy
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    // developer.apple.com/documentation/appkit/nsapplication/activationpolicy-swift.enum/regular
    NSApplicationActivationPolicyRegular,
    // developer.apple.com/documentation/appkit/nsapplication/activationpolicy-swift.enum/accessory
    NSApplicationActivationPolicyAccessory,
    // developer.apple.com/documentation/appkit/nsapplication/activationpolicy-swift.enum/prohibited
    NSApplicationActivationPolicyProhibited,
};

// developer.apple.com/documentation/appkit/nsapplication/activationoptions
typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    // developer.apple.com/documentation/appkit/nsapplication/activationoptions/activateallwindows
    // value: learn.microsoft.com/en-us/dotnet/api/appkit.nsapplicationactivationoptions
    NSApplicationActivateAllWindows = 1 << 0,
};

// developer.apple.com/documentation/appkit/nsrunningapplication
@interface NSRunningApplication : NSObject
// developer.apple.com/documentation/appkit/nsrunningapplication/init(processidentifier:)
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
// developer.apple.com/documentation/appkit/nsrunningapplication/activate(options:)
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
// developer.apple.com/documentation/appkit/nsrunningapplication/current
@property(class, readonly, strong) NSRunningApplication* currentApplication;
// developer.apple.com/documentation/appkit/nsrunningapplication/localizedname
@property(nullable, readonly, copy) NSString* localizedName;
// developer.apple.com/documentation/appkit/nsrunningapplication/bundleidentifier
@property(nullable, readonly, copy) NSString* bundleIdentifier;
// developer.apple.com/documentation/appkit/nsrunningapplication/bundleurl
@property(nullable, readonly, copy) NSURL* bundleURL;
// developer.apple.com/documentation/appkit/nsrunningapplication/icon
@property(nullable, readonly, strong) NSImage* icon;
// developer.apple.com/documentation/appkit/nsrunningapplication/processidentifier
@property(readonly) pid_t processIdentifier;
// developer.apple.com/documentation/appkit/nsrunningapplication/activationpolicy
@property(readonly) NSApplicationActivationPolicy activationPolicy;
// developer.apple.com/documentation/appkit/nsrunningapplication/isterminated
@property(readonly, getter=isTerminated) BOOL terminated;
// developer.apple.com/documentation/appkit/nsrunningapplication/terminate()
- (BOOL)terminate;
// developer.apple.com/documentation/appkit/nsrunningapplication/forceterminate()
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/appkit.nsrunningapplication.forceterminate)
- (BOOL)forceTerminate;
@end
NS_ASSUME_NONNULL_END
