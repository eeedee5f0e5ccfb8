#include "platform/ProgramPath.h"

#include <algorithm>

#include "base/Text.h"

namespace kestrune {

bool isPlainProgramPath(std::string_view path) {
    return path.starts_with('/') && isValidUtf8(path) &&
           std::none_of(path.begin(), path.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; });
}

}  // namespace kestrune
