// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <AppKit/AppKitBase.h>
#import <CoreGraphics/CGImage.h>
#import <Foundation/NSGeometry.h>

NS_ASSUME_NONNULL_BEGIN
@class NSGraphicsContext;
// developer.apple.com/documentation/appkit/nsimagerep/hintkey
typedef NSString* NSImageHintKey;

// developer.apple.com/documentation/appkit/nsimage
@interface NSImage : NSObject
// developer.apple.com/documentation/appkit/nsimage/cgimage(forproposedrect:context:hints:)
- (nullable CGImageRef)CGImageForProposedRect:(nullable NSRect*)proposedDestRect
                                      context:(nullable NSGraphicsContext*)referenceContext
                                        hints:(nullable NSDictionary<NSImageHintKey, id>*)hints CF_RETURNS_NOT_RETAINED;
@end
NS_ASSUME_NONNULL_END
