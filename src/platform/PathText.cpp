#include "platform/PathText.h"

#include <algorithm>

#include "base/Text.h"

namespace kestrune {

bool isPlainRelativePath(const std::string& path) {
    const auto components = split(path, '/');
    return path.find('\0') == std::string::npos &&
           std::none_of(components.begin(), components.end(),
                        [](const auto& name) { return name.empty() || name == "." || name == ".."; });
}

bool isAtOrBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") {
        return path.starts_with('/');
    }
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string inFolder(const std::string& folder, const std::string& name) {
    return (folder == "/" ? "" : folder) + "/" + name;
}

std::string folderOf(const std::string& path) {
    const std::size_t end = path.find_last_of('/');
    return end == 0 ? "/" : path.substr(0, end);
}

}  // namespace kestrune
