#include "platform/macos/MacVolumeInfo.h"

#import <Foundation/Foundation.h>

#include "platform/macos/MacText.h"

namespace kestrune {

namespace {

std::optional<std::int64_t> bytes(id _Nullable value) {
    return [value isKindOfClass:[NSNumber class]] ? std::optional<std::int64_t>([value longLongValue]) : std::nullopt;
}

}  // namespace

std::optional<VolumeCapacity> MacVolumeInfo::capacity(const std::string& path) {
    @autoreleasepool {
        // A URL keeps the values it was asked for: each reading has its own.
        NSDictionary<NSURLResourceKey, id>* values =
            [fileUrl(path) resourceValuesForKeys:@[ NSURLVolumeTotalCapacityKey, NSURLVolumeAvailableCapacityKey ]
                                           error:nil];
        if (values == nil) {
            return std::nullopt;
        }
        return VolumeCapacity{bytes(values[NSURLVolumeTotalCapacityKey]),
                              bytes(values[NSURLVolumeAvailableCapacityKey])};
    }
}

}  // namespace kestrune
