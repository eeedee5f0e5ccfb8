#include <algorithm>
#include <array>
#include <string_view>

#include "base/Text.h"
#include "platform/ProcessText.h"
#include "workspace/RunningRows.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr std::array<std::string_view, 5> aiToolNames{"ollama", "lm studio", "llama-server", "llmster", "comfyui"};

constexpr std::chrono::seconds quitTime{1};

bool isAIToolName(std::string_view text) {
    return std::find(aiToolNames.begin(), aiToolNames.end(), lowerCased(text)) != aiToolNames.end();
}

}  // namespace

void WorkspaceStore::refreshProcesses() {
    if (m_processRefreshInFlight) {
        return;
    }
    m_processRefreshInFlight = true;
    auto applications = m_parts.runningApplications.runningApplications();
    std::erase_if(applications, [](const auto& app) { return app.activationPolicy != ActivationPolicy::regular; });
    m_queue->enqueue([this, applications = std::move(applications)] {
        auto rows = runningItems(m_parts.processListing.snapshot(), applications, m_parts.engine.processIdentifier());
        onMain([this, rows = std::move(rows)]() mutable { publishProcesses(std::move(rows)); });
    });
}

void WorkspaceStore::publishProcesses(std::vector<RunningItem> rows) {
    running.set(std::move(rows));
    processesListed.set(true);
    m_processRefreshInFlight = false;
}

void WorkspaceStore::refreshProcessesSoon() {
    m_refreshTimer = m_parts.mainQueue.after(quitTime, [this] { refreshProcesses(); });
}

ApplicationIcon WorkspaceStore::iconOf(const RunningItem& item) {
    return item.app ? m_parts.runningApplications.iconOf(*item.app) : ApplicationIcon{};
}

std::optional<std::string> WorkspaceStore::iconFile(const std::string& path) const {
    constexpr std::size_t largestIcon = std::size_t{1} << 20U;
    return m_parts.fileStore.read(path, largestIcon).bytes;
}

bool WorkspaceStore::isAIProcess(const std::string& name, const std::string& executable) {
    return isAIToolName(name) || isAIToolName(lastPathComponent(executable));
}

ListeningPorts WorkspaceStore::listeningPorts(const std::string& output) {
    return ProcessText::listeningPorts(output);
}

}  // namespace kestrune
