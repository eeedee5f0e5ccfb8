#include "platform/linux/LinuxMounts.h"

#include <algorithm>
#include <optional>

#include "base/Text.h"
#include "base/WholeNumber.h"
#include "platform/PathText.h"

namespace kestrune {

namespace {

bool isOctal(char digit) {
    return digit >= '0' && digit <= '7';
}

std::string withoutEscapes(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escaped = text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) && isOctal(text[i + 2]) &&
                             isOctal(text[i + 3]);
        if (escaped) {
            const int value = (text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0');
            plain.push_back(static_cast<char>(value));
            i += 3;
        } else {
            plain.push_back(text[i]);
        }
    }
    return plain;
}

std::optional<LinuxMount> parsedLine(const std::string& line) {
    const std::vector<std::string> fields = split(line, ' ');
    if (fields.size() < 6) {
        return std::nullopt;
    }
    const auto id = wholeNumber<std::uint64_t>(fields[0]);
    const auto parentId = wholeNumber<std::uint64_t>(fields[1]);
    LinuxMount mount;
    mount.device = fields[2];
    mount.root = withoutEscapes(fields[3]);
    mount.mountPoint = withoutEscapes(fields[4]);
    if (!id || !parentId || mount.root.empty() || !mount.mountPoint.starts_with('/')) {
        return std::nullopt;
    }
    mount.id = *id;
    mount.parentId = *parentId;
    return mount;
}

/// The place of path inside the mounted file system itself; nothing when path does not lie under the mount point.
std::optional<std::string> placeInFileSystem(const LinuxMount& mount, const std::string& path) {
    if (!isAtOrBelow(path, mount.mountPoint)) {
        return std::nullopt;
    }
    const std::string top = mount.mountPoint == "/" ? "" : mount.mountPoint;
    const std::string root = mount.root == "/" ? "" : mount.root;
    return root + path.substr(top.size());
}

}  // namespace

std::vector<LinuxMount> parseMountInfo(std::string_view text) {
    std::vector<LinuxMount> mounts;
    for (const std::string& line : split(text, '\n')) {
        if (auto mount = parsedLine(line)) {
            mounts.push_back(std::move(*mount));
        }
    }
    return mounts;
}

const LinuxMount* mountWithId(const std::vector<LinuxMount>& mounts, std::uint64_t id) {
    const auto found = std::find_if(mounts.begin(), mounts.end(), [id](const auto& mount) { return mount.id == id; });
    return found == mounts.end() ? nullptr : &*found;
}

bool holdsMountPoint(const std::vector<LinuxMount>& mounts, std::uint64_t mountId, const std::string& path) {
    const LinuxMount* own = mountWithId(mounts, mountId);
    const auto place = own == nullptr ? std::nullopt : placeInFileSystem(*own, path);
    return std::any_of(mounts.begin(), mounts.end(), [&](const LinuxMount& mount) {
        if (isAtOrBelow(mount.mountPoint, path)) {
            return true;
        }
        const LinuxMount* parent = mountWithId(mounts, mount.parentId);
        if (!place || parent == nullptr || parent->device != own->device) {
            return false;
        }
        const auto mountPlace = placeInFileSystem(*parent, mount.mountPoint);
        return mountPlace && isAtOrBelow(*mountPlace, *place);
    });
}

}  // namespace kestrune
