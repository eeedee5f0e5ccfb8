#pragma once

#include <cstdint>

#include "platform/ToolProcessListing.h"

namespace kestrune {

/// What the system's tools list, with the start times that the kernel tells. They are read before the first tool runs
/// and after the last one: where both agree, one process had the number all the while, and the row is about it. A
/// process that began or ended in between has no start time in this snapshot.
class MacProcessListing final : public ProcessListing {
public:
    /// user is the number of the user who runs this program. All others must outlive this object.
    MacProcessListing(ProcessRunner& runner, const SystemTools& tools, const Clock& clock, std::uint32_t user)
        : m_tools(runner, tools, clock), m_user(user) {}

    [[nodiscard]] ProcessSnapshot snapshot() override;

private:
    ToolProcessListing m_tools;
    std::uint32_t m_user;
};

}  // namespace kestrune
