#pragma once

#include <string>

#include "platform/SystemTools.h"

namespace kestrune {

/// The tools by the paths they have on Linux desktops. One that a system lacks answers the run with "could not be
/// started".
class LinuxSystemTools final : public SystemTools {
public:
    /// With the helper at the place it is installed to.
    LinuxSystemTools();

    /// clearCacheHelper is the absolute path of the program that clears cached memory as root.
    explicit LinuxSystemTools(std::string clearCacheHelper);

    [[nodiscard]] ToolCommand diskFree() const override { return {"/bin/df", {"-k", "/"}}; }

    [[nodiscard]] ToolCommand deleteUnavailableSimulators() const override {
        return {"/usr/bin/xcrun", {"simctl", "delete", "unavailable"}};
    }

    /// polkit's question (pkexec(1)); without a graphical agent it is refused and never asked in a terminal. Clearing
    /// cached memory goes to our own helper, whose question says what it is for and whose answer allows nothing else,
    /// as long as nobody but root can have written it.
    [[nodiscard]] ToolCommand withAdministratorRights(const ToolCommand& command) const override;

    [[nodiscard]] ToolCommand topProcesses() const override {
        return {"/bin/ps", {"-eo", "%mem,comm", "--sort=-pcpu"}};
    }

    [[nodiscard]] ToolCommand listeningSockets() const override {
        return {"/usr/bin/lsof", {"-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"}};
    }

    /// The column "exe" is the executable's path: "comm" is a name of 15 bytes that any process can give itself.
    [[nodiscard]] ToolCommand userProcesses() const override;

    [[nodiscard]] ToolCommand processOwner(std::int32_t pid) const override {
        return {"/bin/ps", {"-p", std::to_string(pid), "-o", "uid=,exe="}};
    }

    [[nodiscard]] ToolCommand purgeMemory() const override { return {"/usr/sbin/sysctl", {"-w", "vm.drop_caches=3"}}; }

    [[nodiscard]] ToolCommand thinLocalSnapshots() const override {
        return {"/usr/bin/snapper", {"cleanup", "number"}};
    }

    [[nodiscard]] ToolCommand emptyTrash() const override { return {"/usr/bin/gio", {"trash", "--empty"}}; }

    [[nodiscard]] std::vector<ToolCommand> flushNameCache() const override {
        return {{"/usr/bin/resolvectl", {"flush-caches"}}};
    }

    [[nodiscard]] ToolCommand restartFileManager() const override;

    [[nodiscard]] std::vector<ToolCommand> reduceAnimations(bool reduce) const override {
        return {{"/usr/bin/gsettings",
                 {"set", "org.gnome.desktop.interface", "enable-animations", reduce ? "false" : "true"}}};
    }

private:
    const std::string m_clearCacheHelper;
};

}  // namespace kestrune
