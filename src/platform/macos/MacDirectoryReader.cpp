#include "platform/macos/MacDirectoryReader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace kestrune {

namespace {

// About 400 entries: one of many that walk together.
constexpr std::size_t bufferBytes = std::size_t{32} * 1024;

}  // namespace

MacDirectoryReader::MacDirectoryReader() : m_buffer(std::make_unique<char[]>(bufferBytes)) {
}

void MacDirectoryReader::begin(int descriptor) {
    m_descriptor = descriptor;
    m_entries.clear();
    m_next = 0;
    m_isWhole = true;
    m_failed = false;
}

std::size_t MacDirectoryReader::ready(std::size_t atMost) {
    while (m_next == m_entries.size() && fill()) {
    }
    return std::min(atMost, m_entries.size() - m_next);
}

std::optional<MacDirectoryEntry> MacDirectoryReader::nextAhead() {
    return m_next < m_entries.size() ? std::optional(m_entries[m_next++]) : std::nullopt;
}

bool MacDirectoryReader::fill() {
    m_entries.clear();
    m_next = 0;
    int count = -1;
    if (m_isWhole) {
        attrlist wanted = attributesOfWalk();
        do {
            count = ::getattrlistbulk(m_descriptor, &wanted, m_buffer.get(), bufferBytes, 0);
        } while (count < 0 && errno == EINTR);
    }
    m_failed = count < 0;
    if (count > 0) {
        m_isWhole =
            readAttributes(std::string_view(m_buffer.get(), bufferBytes), static_cast<std::size_t>(count), m_entries);
    }
    return count > 0;
}

}  // namespace kestrune
