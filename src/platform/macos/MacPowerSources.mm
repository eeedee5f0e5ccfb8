#include "platform/macos/MacPowerSources.h"

#import <Foundation/Foundation.h>
#import <IOKit/ps/IOPSKeys.h>
#import <IOKit/ps/IOPowerSources.h>

#include "platform/macos/MacText.h"

namespace kestrune {

namespace {

std::optional<std::int64_t> wholeNumber(id _Nullable value) {
    if (![value isKindOfClass:[NSNumber class]]) {
        return std::nullopt;
    }
    NSNumber* number = value;
    const long long whole = number.longLongValue;
    return [number isEqualToNumber:@(whole)] ? std::optional<std::int64_t>(whole) : std::nullopt;
}

std::optional<std::string> text(id _Nullable value) {
    return [value isKindOfClass:[NSString class]] ? std::optional(toStd(value)) : std::nullopt;
}

}  // namespace

std::vector<PowerSource> MacPowerSources::sources() {
    @autoreleasepool {
        std::vector<PowerSource> sources;
        id snapshot = CFBridgingRelease(IOPSCopyPowerSourcesInfo());
        if (snapshot == nil) {
            return sources;
        }
        CFTypeRef info = (__bridge CFTypeRef)snapshot;
        NSArray* list = CFBridgingRelease(IOPSCopyPowerSourcesList(info));
        for (id source in list) {
            // It belongs to the snapshot.
            id description = (__bridge id)IOPSGetPowerSourceDescription(info, (__bridge CFTypeRef)source);
            if ([description isKindOfClass:[NSDictionary class]]) {
                sources.push_back({
                    wholeNumber(description[@kIOPSCurrentCapacityKey]), wholeNumber(description[@kIOPSMaxCapacityKey]),
                        text(description[@kIOPSPowerSourceStateKey])
                });
            }
        }
        return sources;
    }
}

}  // namespace kestrune
