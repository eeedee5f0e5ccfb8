#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/LinuxListeningSocket.h"

/// Asks the kernel for the listening TCP sockets of this program's network namespace (sock_diag(7)), whoever owns them.
namespace kestrune::LinuxSocketDiagnosis {

enum class Progress {
    more,    ///< the answer goes on
    done,    ///< that was the end of it
    failed,  ///< refused, or no answer of this kind
};

/// Adds the sockets of one received piece of the answer to sockets. A pure function; any thread.
[[nodiscard]] Progress parse(std::string_view piece, std::vector<LinuxListeningSocket>& sockets);

/// The sockets of one version of the protocol. Nothing when the system does not allow the question or does not answer
/// it within two seconds. Any thread.
[[nodiscard]] std::optional<std::vector<LinuxListeningSocket>> listeningSockets(bool isVersion6);

}  // namespace kestrune::LinuxSocketDiagnosis
