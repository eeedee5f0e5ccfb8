#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// What the stand-in for getifaddrs answers. One for all tests: reset before each.
struct FakeInterfaces {
    struct Counters {
        std::uint32_t received = 0;
        std::uint32_t sent = 0;
    };

    struct Entry {
        std::string name;
        unsigned int flags = 0;
        std::optional<int> family;  ///< no address when it is nothing
        std::optional<Counters> counters;
    };

    std::vector<Entry> entries;
    bool fails = false;
    int lists = 0;  ///< that were handed out and not freed

    static FakeInterfaces& state();
    static void reset();
};

}  // namespace kestrune
