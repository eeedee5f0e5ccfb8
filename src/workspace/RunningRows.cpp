#include "workspace/RunningRows.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "base/Text.h"
#include "engine/AppClosing.h"

namespace kestrune {

namespace {

constexpr std::array<std::string_view, 11> developerNames{
    "node", "workerd", "vite", "next-server", "esbuild", "bun", "deno", "ollama", "llama-server", "llmster", "comfyui"};

bool isDeveloperProcess(std::string_view commandName) {
    const std::string name = lowerCased(commandName);
    return std::find(developerNames.begin(), developerNames.end(), name) != developerNames.end();
}

using ApplicationsByPid = std::unordered_map<std::int32_t, const RunningApplication*>;

const RunningApplication* applicationOf(const ProcessRecord& record, const ApplicationsByPid& applications) {
    const auto found = applications.find(record.pid);
    // A number handed out again between the two looks is not that application.
    const bool isThat = found != applications.end() && AppClosing::isSameProcess(*found->second, record.startTime);
    return isThat ? found->second : nullptr;
}

}  // namespace

std::vector<RunningItem> runningItems(const ProcessSnapshot& snapshot,
                                      const std::vector<RunningApplication>& regularApplications, std::int32_t ownPID) {
    ApplicationsByPid applications;
    for (const auto& application : regularApplications) {
        applications.emplace(application.processIdentifier, &application);
    }
    std::vector<RunningItem> rows;
    for (const auto& record : snapshot.processes) {
        if (record.pid == ownPID || record.command.empty()) {
            continue;
        }
        const RunningApplication* application = applicationOf(record, applications);
        const auto listening = snapshot.listeners.find(record.pid);
        const std::string name = lastPathComponent(record.command);
        if (!application && listening == snapshot.listeners.end() && !isDeveloperProcess(name)) {
            continue;
        }
        RunningItem& row = rows.emplace_back();
        row.id = record.pid;
        row.name = application && !application->localizedName.empty() ? application->localizedName : name;
        row.executable = record.command;
        row.memoryMB = record.residentKilobytes / 1024;
        row.cpu = record.cpu;
        row.startTime = record.startTime;
        if (application) {
            row.app = *application;
        }
        if (listening != snapshot.listeners.end()) {
            row.listeners = listening->second;
        }
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const RunningItem& one, const RunningItem& other) { return one.memoryMB > other.memoryMB; });
    return rows;
}

}  // namespace kestrune
