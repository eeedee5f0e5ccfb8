#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/ApplicationSource.h"

namespace kestrune {

/// Applications by the systemd units that the desktop started them in, for desktops that show nobody their windows.
/// Whether an application has a window, and which one is in front, stays unknown; what was started with the session
/// counts as an agent. Programs that an application starts belong to its unit and are not told apart. Main thread.
class SystemdScopeSource final : public ApplicationSource {
public:
    /// Whether menus show the application with this .desktop file id.
    using IsShown = std::function<bool(const std::string& id)>;

    /// Where the kernel shows the control groups and the processes ("/sys/fs/cgroup", "/proc"), and whose are listed.
    SystemdScopeSource(const std::string& cgroupRoot, std::string procRoot, std::uint32_t user, IsShown isShown);

    [[nodiscard]] bool isAvailable() override;

    [[nodiscard]] bool isComplete() override { return false; }

    [[nodiscard]] std::vector<SourcedApplication> applications() override;

    [[nodiscard]] std::optional<std::int32_t> frontmost() override { return std::nullopt; }

    [[nodiscard]] bool tellsFrontmost() override { return false; }

    void observeActivation(ActivationHandler) override {}

    [[nodiscard]] bool close(std::int32_t, const IsStillMeant&) override { return false; }

private:
    void addUnits(const std::string& slice, int depth, std::vector<SourcedApplication>& applications) const;
    void addUnit(const std::string& folder, const std::string& name,
                 std::vector<SourcedApplication>& applications) const;
    [[nodiscard]] std::int32_t mainProcess(const std::vector<std::int32_t>& pids) const;

    std::string m_slice;
    std::string m_procRoot;
    IsShown m_isShown;
};

}  // namespace kestrune
