#pragma once

#include "platform/ProcessListing.h"

namespace kestrune {

/// The processes the test starts; none until then.
class FakeProcessListing final : public ProcessListing {
public:
    [[nodiscard]] ProcessSnapshot snapshot() override {
        ++reads;
        return now;
    }

    ProcessSnapshot now;
    int reads = 0;
};

}  // namespace kestrune
