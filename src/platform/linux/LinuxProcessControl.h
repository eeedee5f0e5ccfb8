#pragma once

#include "platform/ProcessControl.h"

namespace kestrune {

/// Takes hold of the process first, then makes sure that it is the one meant, then signals what it holds: a number that
/// was handed out again can mislead it at no point. Where the kernel cannot hold a process (before Linux 5.3), nothing
/// is ended.
class LinuxProcessControl final : public ProcessControl {
public:
    LinuxProcessControl() = default;

    [[nodiscard]] bool requestTermination(const ProcessReference& process) override;
    [[nodiscard]] std::optional<ProcessDetails> details(const ProcessReference& process) override;
};

}  // namespace kestrune
