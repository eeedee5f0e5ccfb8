#pragma once

#include <algorithm>
#include <map>
#include <vector>

#include "platform/ProcessControl.h"

namespace kestrune {

/// Processes by what they are; a request reaches exactly the one it names.
class FakeProcessControl final : public ProcessControl {
public:
    [[nodiscard]] bool requestTermination(const ProcessReference& process) override {
        requests.push_back(process);
        return process.pid >= 2 && std::find(running.begin(), running.end(), process) != running.end();
    }

    [[nodiscard]] std::optional<ProcessDetails> details(const ProcessReference& process) override {
        const auto known = detailsByPid.find(process.pid);
        return known == detailsByPid.end() ? std::nullopt : std::optional(known->second);
    }

    std::vector<ProcessReference> running;
    std::map<std::int32_t, ProcessDetails> detailsByPid;
    std::vector<ProcessReference> requests;  ///< in order
};

}  // namespace kestrune
