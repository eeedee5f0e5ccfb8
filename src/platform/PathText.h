#pragma once

#include <string>
#include <string_view>

namespace kestrune {

/// Whether path leads down from the folder it starts in by its text alone: no ".", "..", NUL and no empty component.
[[nodiscard]] bool isPlainRelativePath(const std::string& path);

/// Whether path is folder itself or lies below it, by text alone.
[[nodiscard]] bool isAtOrBelow(std::string_view path, std::string_view folder);

/// folder, which may be "/", and name joined.
[[nodiscard]] std::string inFolder(const std::string& folder, const std::string& name);

/// What holds path, an absolute path in standard form.
[[nodiscard]] std::string folderOf(const std::string& path);

}  // namespace kestrune
