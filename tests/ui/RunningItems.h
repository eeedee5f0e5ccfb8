#pragma once

#include <string>
#include <utility>
#include <vector>

#include "workspace/RunningItem.h"

namespace kestrune {

/// A developer process.
[[nodiscard]] inline RunningItem runningProcess(std::int32_t pid, std::string name, std::int64_t memoryMB = 100,
                                                std::vector<std::string> listeners = {}) {
    const std::string path = "/usr/bin/" + name;
    return {pid, std::move(name), path, memoryMB, "1.5", {}, std::move(listeners), 1};
}

/// A regular application.
[[nodiscard]] inline RunningItem runningApp(std::int32_t pid, std::string name, std::int64_t memoryMB = 100) {
    RunningItem item = runningProcess(pid, std::move(name), memoryMB);
    RunningApplication application;
    application.processIdentifier = pid;
    application.startTime = item.startTime;
    application.localizedName = item.name;
    application.activationPolicy = ActivationPolicy::regular;
    item.app = application;
    return item;
}

/// count processes, each with a name of its own.
[[nodiscard]] inline std::vector<RunningItem> manyProcesses(std::int32_t count) {
    std::vector<RunningItem> items;
    for (std::int32_t index = 0; index < count; ++index) {
        const std::string number = std::to_string(index);
        items.push_back(runningProcess(1000 + index, "process " + number, 20'000 - index, {"*:" + number}));
    }
    return items;
}

}  // namespace kestrune
