#include "platform/macos/MacTrashRecord.h"

#include <sys/xattr.h>

namespace kestrune {

namespace {

/// What the text of an item's record begins with. Without the device: its number may change when the volume is mounted
/// again.
std::string beginning(const FileIdentity& identity) {
    return std::to_string(identity.inode) + ' ' + std::to_string(identity.birthSeconds) + ' ' +
           std::to_string(identity.birthNanoseconds) + ' ';
}

}  // namespace

bool MacTrashRecord::write(int item, const FileIdentity& identity, const std::string& path) {
    const std::string text = beginning(identity) + path;
    return text.size() <= longest && ::fsetxattr(item, attribute, text.data(), text.size(), 0, 0) == 0;
}

std::optional<std::string> MacTrashRecord::read(int item, const FileIdentity& identity) {
    std::string text(longest, '\0');
    const ssize_t length = ::fgetxattr(item, attribute, text.data(), text.size(), 0, 0);
    if (length < 0) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(length));
    const std::string expected = beginning(identity);
    const bool isOurs = text.starts_with(expected) && text.find('\0') == std::string::npos;
    return isOurs ? std::optional(text.substr(expected.size())) : std::nullopt;
}

void MacTrashRecord::remove(int item) {
    ::fremovexattr(item, attribute, 0);
}

}  // namespace kestrune
