// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#include <CoreFoundation/CoreFoundation.h>
#include <dispatch/dispatch.h>
#include <objc/NSObjCRuntime.h>
#include <objc/NSObject.h>
#include <objc/objc.h>
#include <os/availability.h>
#include <stdarg.h>

#if defined(__cplusplus)
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_NOESCAPE __attribute__((noescape))
#define NS_INLINE static __inline__ __attribute__((always_inline))
#define NS_ENUM(type, name)                                          \
    enum __attribute__((enum_extensibility(open))) name : type name; \
    enum name : type
#if defined(__cplusplus)
#define NS_OPTIONS(type, name) \
    type name;                 \
    enum __attribute__((flag_enum, enum_extensibility(open))) : type
#else
#define NS_OPTIONS(type, name)                                                  \
    enum __attribute__((flag_enum, enum_extensibility(open))) name : type name; \
    enum name : type
#endif

NS_ASSUME_NONNULL_BEGIN
@class NSArray<ObjectType>, NSDictionary<KeyType, ObjectType>, NSString, NSURL, NSError, NSDate, NSNumber;
// developer.apple.com/documentation/foundation/timeinterval
typedef double NSTimeInterval;
// developer.apple.com/documentation/objectivec/nszone
typedef struct _NSZone NSZone;

// developer.apple.com/documentation/foundation/nscopying
@protocol NSCopying
// developer.apple.com/documentation/foundation/nscopying/copy(with:)
- (id)copyWithZone:(nullable NSZone*)zone;
@end

// developer.apple.com/documentation/foundation/nsfastenumerationstate
typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

// developer.apple.com/documentation/foundation/nsfastenumeration
@protocol NSFastEnumeration
// developer.apple.com/documentation/foundation/nsfastenumeration/countbyenumerating(with:objects:count:)
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)len;
@end

// developer.apple.com/documentation/foundation/nssecurecoding
@protocol NSSecureCoding
@end

// developer.apple.com/documentation/foundation/cfbridgingrelease
NS_INLINE id _Nullable CFBridgingRelease(CFTypeRef __attribute__((cf_consumed)) _Nullable x) {
    return (__bridge_transfer id)x;
}

NS_ASSUME_NONNULL_END
