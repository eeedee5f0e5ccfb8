#pragma once

#include "platform/RunningApplications.h"

namespace kestrune {

/// The applications the test starts; none until then.
class FakeRunningApplications final : public RunningApplications {
public:
    [[nodiscard]] std::vector<RunningApplication> runningApplications() override {
        ++reads;
        return applications;
    }

    std::vector<RunningApplication> applications;
    int reads = 0;
};

}  // namespace kestrune
