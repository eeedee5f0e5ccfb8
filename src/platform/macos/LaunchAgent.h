#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SystemTools.h"

/// The launch agent that starts the program at login: launchd.plist(5), launchctl(1). Pure.
namespace kestrune::LaunchAgent {

/// Its label, by which launchd knows it.
[[nodiscard]] const std::string& label();

/// Where its property list lies.
[[nodiscard]] std::string path(const std::string& homeDirectory);

/// The property list, in XML, that starts the program at executable, an absolute path, when the user logs in. Nothing
/// for a path that XML cannot hold: one with control characters or bytes that are not UTF-8.
[[nodiscard]] std::optional<std::string> propertyList(const std::string& executable);

/// Whether launchd started a process for the agent. serviceName is its XPC_SERVICE_NAME, which what it starts inherits;
/// parent is its parent's process number.
[[nodiscard]] bool isProcess(std::string_view serviceName, std::int32_t parent);

/// Makes the agent whose property list lies at path known in the desktop session of user, and starts it.
[[nodiscard]] ToolCommand bootstrap(std::uint32_t user, const std::string& path);

/// Ends the agent in the desktop session of user and has it forgotten there.
[[nodiscard]] ToolCommand bootout(std::uint32_t user);

}  // namespace kestrune::LaunchAgent
