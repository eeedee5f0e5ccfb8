#pragma once

#include <QFileDialog>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "platform/FolderChooser.h"

namespace kestrune {

/// Shows the desktop's folder panel, or Qt's where the desktop has none. A folder that a panel cannot express exactly
/// is not answered at all. Main thread.
class QtFolderChooser final : public FolderChooser {
public:
    /// parent answers the window that the panel belongs to, or null when none is visible. opened, where given, is told
    /// the message once the panel has been made, for a desktop's panel that says only part of what the toolkit knows.
    explicit QtFolderChooser(std::function<QWidget*()> parent,
                             std::function<void(const std::string& message)> opened = {});

    /// While a panel is open already, that one comes to the front and the answer is nothing.
    [[nodiscard]] std::optional<std::string> chooseFolder(const std::string& message,
                                                          const std::string& startFolder) override;

private:
    std::function<QWidget*()> m_parent;
    std::function<void(const std::string& message)> m_opened;
    QPointer<QFileDialog> m_open;
};

}  // namespace kestrune
