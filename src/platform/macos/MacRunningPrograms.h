#pragma once

#include "platform/RunningPrograms.h"

namespace kestrune {

/// The names of all running applications as the workspace shows them; one without a name is left out. Main thread.
class MacRunningPrograms final : public RunningPrograms {
public:
    [[nodiscard]] std::vector<std::string> names() override;
};

}  // namespace kestrune
