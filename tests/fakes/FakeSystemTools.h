#pragma once

#include "platform/PrivilegedCommand.h"
#include "platform/SystemTools.h"

namespace kestrune {

/// The tools with their agreed paths and arguments; nothing is started by naming them.
class FakeSystemTools final : public SystemTools {
public:
    [[nodiscard]] ToolCommand diskFree() const override { return diskFreeCommand; }

    [[nodiscard]] ToolCommand deleteUnavailableSimulators() const override { return simulatorsCommand; }

    [[nodiscard]] ToolCommand withAdministratorRights(const ToolCommand& command) const override {
        return {administratorExecutable,
                {"-e", PrivilegedCommand::administratorScript(command.executable, command.arguments)}};
    }

    [[nodiscard]] ToolCommand topProcesses() const override { return {"/bin/ps", {"-arc", "-eo", "%mem,comm"}}; }

    [[nodiscard]] ToolCommand listeningSockets() const override { return listeningSocketsCommand; }

    [[nodiscard]] ToolCommand userProcesses() const override { return userProcessesCommand; }

    [[nodiscard]] ToolCommand processOwner(std::int32_t pid) const override {
        return {"/bin/ps", {"-p", std::to_string(pid), "-o", "uid=,comm="}};
    }

    [[nodiscard]] ToolCommand purgeMemory() const override { return {"/usr/sbin/purge", {}}; }

    [[nodiscard]] ToolCommand thinLocalSnapshots() const override {
        return {"/usr/bin/tmutil", {"thinlocalsnapshots", "/", "999999999999999", "4"}};
    }

    [[nodiscard]] ToolCommand emptyTrash() const override {
        return {"/usr/bin/osascript", {"-e", "tell application \"Finder\" to empty trash"}};
    }

    [[nodiscard]] std::vector<ToolCommand> flushNameCache() const override {
        return {{"/usr/bin/dscacheutil", {"-flushcache"}}, {"/usr/bin/killall", {"-HUP", "mDNSResponder"}}};
    }

    [[nodiscard]] ToolCommand restartFileManager() const override { return {"/usr/bin/killall", {"Finder"}}; }

    [[nodiscard]] std::vector<ToolCommand> reduceAnimations(bool reduce) const override {
        const std::string value = reduce ? "true" : "false";
        const std::string tool = "/usr/bin/defaults";
        return {{tool, {"write", "NSGlobalDomain", "NSAutomaticWindowAnimationsEnabled", "-bool", value}},
                {tool, {"write", "NSGlobalDomain", "NSScrollAnimationEnabled", "-bool", value}},
                {tool, {"write", "com.apple.finder", "DisableAllAnimations", "-bool", value}}};
    }

    ToolCommand listeningSocketsCommand{"/usr/sbin/lsof", {"-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"}};
    ToolCommand userProcessesCommand{"/bin/ps", {"-U", "501", "-o", "pid=,rss=,pcpu=,comm="}};
    ToolCommand diskFreeCommand{"/bin/df", {"-k", "/"}};
    ToolCommand simulatorsCommand{"/usr/bin/xcrun", {"simctl", "delete", "unavailable"}};
    std::string administratorExecutable = "/usr/bin/osascript";
};

}  // namespace kestrune
