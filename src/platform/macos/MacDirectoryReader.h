#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "platform/macos/MacAttributeBuffer.h"

namespace kestrune {

/// Lists open folders through getattrlistbulk(2), which tells names and sizes together, with one buffer. One thread at
/// a time.
///
/// The manual page promises a number of entries a call, 0 at the end and -1 with errno for an error; each descriptor
/// has its own position. It promises no order, and nothing about entries that come and go meanwhile.
class MacDirectoryReader final {
public:
    MacDirectoryReader();

    /// Turns to another folder; descriptor stands at its beginning and stays open until the last entry was read.
    void begin(int descriptor);

    /// How many entries, up to atMost, nextAhead() gives. Asks the system when there are none; 0 then means the end,
    /// or that the system failed (see failed()).
    [[nodiscard]] std::size_t ready(std::size_t atMost);

    /// The next of the entries that were read ahead; never asks the system. Valid until the next call of ready().
    [[nodiscard]] std::optional<MacDirectoryEntry> nextAhead();

    /// Whether the last ready() ended because the folder could not be read on.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    [[nodiscard]] bool fill();

    const std::unique_ptr<char[]> m_buffer;
    std::vector<MacDirectoryEntry> m_entries;
    std::size_t m_next = 0;
    int m_descriptor = -1;
    bool m_isWhole = true;  ///< what was read so far could be told apart
    bool m_failed = false;
};

}  // namespace kestrune
