#pragma once

#include <memory>
#include <string>

#include "platform/FileViewer.h"

class QObject;

namespace kestrune {

/// Shows files in the desktop's file manager. Main thread.
class LinuxFileViewer final : public FileViewer {
public:
    /// opener opens a folder where the desktop has no file manager to ask; an absolute path.
    explicit LinuxFileViewer(std::string opener = "/usr/bin/xdg-open");
    ~LinuxFileViewer() override;

    void reveal(const std::string& path) override;

    /// The file URI of path: every byte but unreserved characters and "/" percent-encoded.
    [[nodiscard]] static std::string fileUri(const std::string& path);

    /// The folder that holds path.
    [[nodiscard]] static std::string enclosingFolder(const std::string& path);

private:
    const std::string m_opener;
    std::unique_ptr<QObject> m_context;  ///< answers that arrive after it is gone are dropped
};

}  // namespace kestrune
