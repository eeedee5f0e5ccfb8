// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>
#import <CoreGraphics/CGImage.h>

NS_ASSUME_NONNULL_BEGIN
// developer.apple.com/documentation/appkit/nsbitmapimagerep/filetype
typedef NS_ENUM(NSUInteger, NSBitmapImageFileType) {
    // value: docs.rs/crate/icrate/0.1.2/source/src/generated/AppKit/NSBitmapImageRep.rs
    NSBitmapImageFileTypePNG = 4,
};
// developer.apple.com/documentation/appkit/nsbitmapimagerep/propertykey
typedef NSString* NSBitmapImageRepPropertyKey;

// developer.apple.com/documentation/appkit/nsimagerep
@interface NSImageRep : NSObject
@end

// developer.apple.com/documentation/appkit/nsbitmapimagerep
//   (page not seen; learn.microsoft.com/en-us/dotnet/api/appkit.nsbitmapimagerep)
@interface NSBitmapImageRep : NSImageRep
// developer.apple.com/documentation/appkit/nsbitmapimagerep/init(cgimage:)-7o5tz
- (instancetype)initWithCGImage:(CGImageRef)cgImage;
// developer.apple.com/documentation/appkit/nsbitmapimagerep/representation(using:properties:)
- (nullable NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                                 properties:(NSDictionary<NSBitmapImageRepPropertyKey, id>*)properties;
@end
NS_ASSUME_NONNULL_END
