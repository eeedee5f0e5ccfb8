#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"

/// Whether an X server answers. libxcb waits without limit for one that accepts a connection and then says nothing, so
/// it is asked here first. Any thread.
namespace kestrune::XcbGreeting {

/// The sockets on this machine behind a display's name ("@" before a name outside the file system), in the order to try
/// them; none for a server that is reached another way.
[[nodiscard]] std::vector<std::string> socketsOf(const std::string& display);

/// Greets the server at the first of sockets that accepts. The connection when the server begins to answer within
/// patience; else it owns nothing. As long as it is kept, the server does not end for want of clients.
[[nodiscard]] LinuxFileDescriptor answered(const std::vector<std::string>& sockets, std::chrono::milliseconds patience);

}  // namespace kestrune::XcbGreeting
