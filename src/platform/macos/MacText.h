#pragma once

#import <Foundation/Foundation.h>

#include <sys/syslimits.h>

#include <array>
#include <string>

#include "platform/macos/MacUtf8.h"

/// Text and paths between Foundation and the standard library. Any thread.
namespace kestrune {

/// text in UTF-8, NUL characters included; nothing gives empty text. Half of a surrogate pair, which UTF-8 cannot
/// hold, becomes a replacement character. Not for paths.
[[nodiscard]] inline std::string toStd(NSString* _Nullable text) {
    NSData* data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    return data.length == 0 ? std::string() : std::string(static_cast<const char*>(data.bytes), data.length);
}

/// text for showing or for keys; U+FFFD stands for each byte that is not UTF-8. Not for paths.
[[nodiscard]] inline NSString* _Nonnull toNs(const std::string& text) {
    const std::string utf8 = MacUtf8::wellFormed(text);
    NSString* made = [[NSString alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding];
    return made != nil ? made : @"";
}

/// The path of a file URL as the file system's calls take it, without a trailing "/"; empty when url is nothing or no
/// file's.
[[nodiscard]] inline std::string pathOf(NSURL* _Nullable url) {
    std::array<char, PATH_MAX> path{};
    return [url getFileSystemRepresentation:path.data() maxLength:path.size()] ? std::string(path.data())
                                                                               : std::string();
}

/// The file URL of path, an absolute path whose bytes are kept as they are. A link stays a link: no trailing "/".
[[nodiscard]] inline NSURL* _Nonnull fileUrl(const std::string& path) {
    return [NSURL fileURLWithFileSystemRepresentation:path.c_str() isDirectory:NO relativeToURL:nil];
}

}  // namespace kestrune
