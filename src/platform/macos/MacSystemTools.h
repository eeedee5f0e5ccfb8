#pragma once

#include "platform/SystemTools.h"

namespace kestrune {

/// The tools that come with macOS.
class MacSystemTools final : public SystemTools {
public:
    /// user is the number of the user who runs this program.
    explicit MacSystemTools(std::uint32_t user) : m_user(user) {}

    [[nodiscard]] ToolCommand diskFree() const override;
    [[nodiscard]] ToolCommand deleteUnavailableSimulators() const override;
    [[nodiscard]] ToolCommand withAdministratorRights(const ToolCommand& command) const override;
    [[nodiscard]] ToolCommand topProcesses() const override;
    [[nodiscard]] ToolCommand listeningSockets() const override;
    [[nodiscard]] ToolCommand userProcesses() const override;
    [[nodiscard]] ToolCommand processOwner(std::int32_t pid) const override;
    [[nodiscard]] ToolCommand purgeMemory() const override;
    [[nodiscard]] ToolCommand thinLocalSnapshots() const override;
    [[nodiscard]] ToolCommand emptyTrash() const override;
    [[nodiscard]] std::vector<ToolCommand> flushNameCache() const override;
    [[nodiscard]] ToolCommand restartFileManager() const override;
    [[nodiscard]] std::vector<ToolCommand> reduceAnimations(bool reduce) const override;

private:
    std::uint32_t m_user;
};

}  // namespace kestrune
