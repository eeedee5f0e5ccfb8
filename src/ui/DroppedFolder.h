#pragma once

#include <optional>
#include <string>

class QMimeData;

namespace kestrune {

/// The one folder of this machine that data names, as an absolute path of bytes; nothing for a file, for several things
/// and for what lies elsewhere. Looks at the disk.
[[nodiscard]] std::optional<std::string> droppedFolder(const QMimeData& data);

}  // namespace kestrune
