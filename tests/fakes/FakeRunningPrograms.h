#pragma once

#include "platform/RunningPrograms.h"

namespace kestrune {

/// The programs the test starts; none until then.
class FakeRunningPrograms final : public RunningPrograms {
public:
    [[nodiscard]] std::vector<std::string> names() override {
        ++reads;
        return running;
    }

    std::vector<std::string> running;
    int reads = 0;
};

}  // namespace kestrune
