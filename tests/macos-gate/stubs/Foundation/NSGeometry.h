// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

// developer.apple.com/documentation/corefoundation/cgfloat-c.typealias
typedef double CGFloat;

// developer.apple.com/documentation/corefoundation/cgpoint, of the name
// members: docs.rs/polyhorn-ios-sys/latest/polyhorn_ios_sys/coregraphics/struct.CGPoint.html
typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;

// developer.apple.com/documentation/corefoundation/cgsize (page not seen; docs.rs/core_graphics_min)
typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;

// developer.apple.com/documentation/corefoundation/cgrect
//   (page not seen; onestack.dev/ios-reference/CoreFoundation/CGRect)
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

// developer.apple.com/documentation/foundation/nsrect
typedef CGRect NSRect;

// developer.apple.com/documentation/foundation/nsmakerect(_:_:_:_:)
NS_INLINE NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
    return {{x, y}, {w, h}};
}
