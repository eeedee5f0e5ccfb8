#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/Result.h"

namespace kestrune {

/// What the system says after it moved something to the Trash.
struct MacTrashAnswer {
    std::optional<std::string> location;  ///< nothing when it did not say where
};

/// The system's own move of one item to the Trash. It goes by the path: whether what lies there is what was meant is
/// for the caller to see, before and after.
class MacTrashItem {
public:
    MacTrashItem() = default;
    MacTrashItem(const MacTrashItem&) = delete;
    MacTrashItem& operator=(const MacTrashItem&) = delete;
    virtual ~MacTrashItem() = default;

    /// Moves what lies at path, which is absolute, or answers the system's own words for why not. Blocks; a work
    /// queue's thread.
    [[nodiscard]] virtual Result<MacTrashAnswer, std::string> move(const std::string& path) = 0;
};

/// The one of NSFileManager.
[[nodiscard]] std::unique_ptr<MacTrashItem> makeMacTrashItem();

}  // namespace kestrune
