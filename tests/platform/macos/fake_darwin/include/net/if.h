// Adds what the system's header of this name has beside what is common.
#pragma once
#pragma GCC system_header

#include <cstdint>

#include_next <net/if.h>

struct if_data {
    unsigned char kindAndLengths[8];
    std::uint32_t unitsAndPackets[8];
    std::uint32_t ifi_ibytes;
    std::uint32_t ifi_obytes;
    std::uint32_t otherCounters[6];
    std::int32_t lastChange[2];
    std::uint32_t reserved[4];
};
