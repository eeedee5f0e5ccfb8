#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/LinuxDirectoryReader.h"

namespace kestrune {

/// Directory entries that were listed and wait to be looked at: per entry the type, the name and a NUL. Read like a
/// LinuxDirectoryReader.
class LinuxWalkNames final {
public:
    explicit LinuxWalkNames(std::string names) : m_names(std::move(names)) {}

    static void append(std::string& names, const DirectoryRecord& record) {
        names += static_cast<char>(record.type);
        names += record.name;
        names += '\0';
    }

    [[nodiscard]] std::optional<DirectoryRecord> nextAhead() {
        if (m_position == m_names.size()) {
            return std::nullopt;
        }
        const char* entry = m_names.data() + m_position;
        m_position = m_names.find('\0', m_position + 1) + 1;
        return DirectoryRecord{entry + 1, static_cast<unsigned char>(entry[0]), 0};
    }

    [[nodiscard]] std::size_t ready(std::size_t atMost) const {
        std::size_t count = 0;
        for (std::size_t place = m_position; place < m_names.size() && count < atMost; ++count) {
            place = m_names.find('\0', place + 1) + 1;
        }
        return count;
    }

    [[nodiscard]] std::size_t bytesAhead() const { return m_names.size() - m_position; }

private:
    const std::string m_names;
    std::size_t m_position = 0;
};

}  // namespace kestrune
