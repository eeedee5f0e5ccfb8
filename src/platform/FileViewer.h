#pragma once

#include <string>

namespace kestrune {

class FileViewer {
public:
    FileViewer() = default;
    FileViewer(const FileViewer&) = delete;
    FileViewer& operator=(const FileViewer&) = delete;
    virtual ~FileViewer() = default;

    /// Opens the file manager with the item at path selected (org.freedesktop.FileManager1, or the enclosing folder
    /// where nobody offers it). Returns at once. Main thread.
    virtual void reveal(const std::string& path) = 0;
};

}  // namespace kestrune
