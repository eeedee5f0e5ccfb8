#pragma once

#include <string>
#include <vector>

#include "platform/FileViewer.h"

namespace kestrune {

class FakeFileViewer final : public FileViewer {
public:
    void reveal(const std::string& path) override { revealed.push_back(path); }

    std::vector<std::string> revealed;
};

}  // namespace kestrune
