#pragma once

#include <optional>
#include <string>

#include "platform/macos/MacPutBackItem.h"

namespace kestrune {

/// The move of one pinned item from the Trash to its place: one rename that replaces nothing, then a look whether what
/// arrived is what was meant, and back again if not. What the constructor takes must outlive it. One work queue's
/// thread.
class MacPutBackMove final {
public:
    MacPutBackMove(const std::string& home, const MacPutBackItem& item);

    /// The path where the item lies now.
    [[nodiscard]] Result<std::string, PutBackError> run() const;

private:
    [[nodiscard]] int renameItem() const;
    [[nodiscard]] PutBackError failure(int errorNumber) const;
    [[nodiscard]] std::optional<PutBackError> doubt() const;
    [[nodiscard]] PutBackError undo(const PutBackError& reason) const;
    [[nodiscard]] bool isItemInTrash() const;

    const std::string& m_home;
    const MacPutBackItem& m_item;
    const int m_trash;
    const int m_folder;
};

}  // namespace kestrune
