#pragma once

#include <string>
#include <vector>

#include "platform/LinkOpener.h"

namespace kestrune {

/// Notes what would be opened.
class FakeLinkOpener final : public LinkOpener {
public:
    bool open(const std::string& address) override {
        opened.push_back(address);
        return answer;
    }

    bool answer = true;
    std::vector<std::string> opened;
};

}  // namespace kestrune
