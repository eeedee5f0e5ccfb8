#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// A file of /proc or /sys that is read again and again: it is opened once and then read from its start each time,
/// which costs a fraction of opening it. One thread at a time.
class LinuxStatusFile final {
public:
    explicit LinuxStatusFile(std::string path) : m_path(std::move(path)) {}

    /// What the file says now, cut after atMost bytes; valid until the next call. Nothing when it cannot be read; the
    /// next call then opens it anew.
    [[nodiscard]] std::optional<std::string_view> read(std::size_t atMost);

private:
    std::string m_path;
    std::string m_buffer;
    LinuxFileDescriptor m_descriptor;
};

}  // namespace kestrune
