#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <utility>

#include "platform/RunningApplications.h"

namespace kestrune {

/// The pictures of applications, each encoded once and kept while there is room: what was not asked for longest goes
/// first. One thread.
class ApplicationIcons final {
public:
    /// Encodes a picture as PNG; empty when there is none.
    using Encode = std::function<std::string()>;

    explicit ApplicationIcons(std::size_t most = 128) : m_most(most) {}

    /// The application's picture, encoded now unless it is kept. That there was none is not kept.
    [[nodiscard]] ApplicationIcon of(const RunningApplication& application, const Encode& encode);

private:
    /// Applications without a bundle may share an executable.
    using Key = std::pair<std::string, std::string>;

    struct Entry {
        Key key;
        ApplicationIcon icon;
    };

    std::size_t m_most;
    std::list<Entry> m_entries;  ///< the one asked for last comes first
};

}  // namespace kestrune
