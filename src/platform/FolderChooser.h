#pragma once

#include <optional>
#include <string>

namespace kestrune {

/// The panel in which a person picks one folder.
class FolderChooser {
public:
    FolderChooser() = default;
    FolderChooser(const FolderChooser&) = delete;
    FolderChooser& operator=(const FolderChooser&) = delete;
    virtual ~FolderChooser() = default;

    /// Shows the panel, beginning at startFolder, with message where the person reads it; directories only, one at
    /// most. Nothing when it was dismissed. The event loop goes on meanwhile, so the caller must look again at what it
    /// relied on. Main thread.
    [[nodiscard]] virtual std::optional<std::string> chooseFolder(const std::string& message,
                                                                  const std::string& startFolder) = 0;
};

}  // namespace kestrune
