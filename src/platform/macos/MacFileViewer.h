#pragma once

#include "platform/FileViewer.h"

namespace kestrune {

/// Shows files in the Finder. Main thread.
class MacFileViewer final : public FileViewer {
public:
    void reveal(const std::string& path) override;
};

}  // namespace kestrune
