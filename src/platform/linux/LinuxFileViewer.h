#pragma once

#include <memory>
#include <string>

#include "platform/FileViewer.h"

class QObject;

namespace kestrune {

/// Shows files in the desktop's file manager. Main thread.
class LinuxFileViewer final : public FileViewer {
public:
    LinuxFileViewer();
    ~LinuxFileViewer() override;

    void reveal(const std::string& path) override;

    /// The file URI of path: every byte but unreserved characters and "/" percent-encoded.
    [[nodiscard]] static std::string fileUri(const std::string& path);

    /// The folder that holds path.
    [[nodiscard]] static std::string enclosingFolder(const std::string& path);

private:
    std::unique_ptr<QObject> m_context;  ///< answers that arrive after it is gone are dropped
};

}  // namespace kestrune
