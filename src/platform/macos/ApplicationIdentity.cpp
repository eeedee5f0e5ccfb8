#include "platform/macos/ApplicationIdentity.h"

#include <optional>

#include "platform/macos/MacProcessIdentity.h"

namespace kestrune::ApplicationIdentity {

bool mayBeEnded(const RunningApplication& application, std::int32_t ownProcess, std::uint32_t user) {
    const std::int32_t pid = application.processIdentifier;
    if (pid < 2 || pid == ownProcess || application.startTime == 0 || application.executable.empty()) {
        return false;
    }
    return MacProcessIdentity::of(pid) ==
           MacProcessIdentity::Identity{application.startTime, user, application.executable};
}

bool hasEnded(const RunningApplication& application) {
    const std::optional<MacProcessIdentity::Identity> now = MacProcessIdentity::of(application.processIdentifier);
    return !now || (application.startTime != 0 && now->startTime != application.startTime) ||
           (!application.executable.empty() && now->executable != application.executable);
}

}  // namespace kestrune::ApplicationIdentity
