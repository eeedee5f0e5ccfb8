// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/NSApplication.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsappearance/name-swift.struct
typedef NSString* NSAppearanceName;
// developer.apple.com/documentation/appkit/nsappearance/name-swift.struct/aqua
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameAqua;
// developer.apple.com/documentation/appkit/nsappearance/name-swift.struct/darkaqua
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameDarkAqua API_AVAILABLE(macos(10.14));

// developer.apple.com/documentation/appkit/nsappearance
@interface NSAppearance : NSObject
// developer.apple.com/documentation/appkit/nsappearance/bestmatch(from:)
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances
    API_AVAILABLE(macos(10.14));
@end

@interface NSApplication (NSAppearanceCustomization)
// developer.apple.com/documentation/appkit/nsapplication/effectiveappearance
@property(readonly, strong) NSAppearance* effectiveAppearance API_AVAILABLE(macos(10.14));
@end
NS_ASSUME_NONNULL_END
