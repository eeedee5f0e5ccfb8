#include "platform/linux/XcbWindows.h"

#include <map>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

// One of the two may carry its domain.
bool isSameMachine(std::string_view one, std::string_view other) {
    const std::string first = lowerCased(one);
    const std::string second = lowerCased(other);
    const bool isQualified = first.find('.') != std::string::npos && second.find('.') != std::string::npos;
    return isQualified ? first == second
                       : !first.empty() && first.substr(0, first.find('.')) == second.substr(0, second.find('.'));
}

std::vector<std::string> hintsOf(const XcbWindow& window) {
    std::vector<std::string> hints;
    for (const std::string& hint : {window.windowClass, window.instance}) {
        if (!hint.empty() && (hints.empty() || hints.front() != hint)) {
            hints.push_back(hint);
        }
    }
    return hints;
}

}  // namespace

std::int32_t processOf(const XcbClientFacts& client, std::string_view localMachine) {
    const bool isClaimed =
        client.claimedPid && *client.claimedPid > 0 && std::in_range<std::int32_t>(*client.claimedPid);
    const std::int32_t claimed = isClaimed ? static_cast<std::int32_t>(*client.claimedPid) : 0;
    const bool isLocal = client.machine && isSameMachine(*client.machine, localMachine);
    if (!client.connectionPid) {
        return isLocal ? claimed : 0;
    }
    // A machine may have been renamed since the window appeared; both numbers then still agree.
    const bool isElsewhere = client.machine && !isLocal && claimed != *client.connectionPid;
    return isElsewhere ? 0 : *client.connectionPid;
}

std::vector<SourcedApplication> applicationsBehind(const std::vector<XcbWindow>& windows) {
    std::vector<SourcedApplication> applications;
    std::map<std::int32_t, std::size_t> places;
    for (const XcbWindow& window : windows) {
        if (window.pid <= 0) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(window.pid, applications.size());
        if (isNew) {
            applications.emplace_back();
        }
        SourcedApplication& application = applications[place->second];
        if (isNew || (window.isMain() && application.policy == ActivationPolicy::accessory)) {
            application.pid = window.pid;
            application.hints = hintsOf(window);
            application.name = window.windowClass;
            application.policy = window.isMain() ? ActivationPolicy::regular : ActivationPolicy::accessory;
        }
    }
    return applications;
}

}  // namespace kestrune
