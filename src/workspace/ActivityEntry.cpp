#include "workspace/ActivityEntry.h"

#include <array>
#include <cstdint>
#include <random>
#include <string_view>

namespace kestrune {

std::string makeActivityId() {
    std::random_device random;
    std::uniform_int_distribution<unsigned> anyByte(0, 255);
    std::array<unsigned, 16> bytes{};
    for (unsigned& byte : bytes) {
        byte = anyByte(random);
    }
    // RFC 4122, section 4.4: the version and the variant are the only bits that are not random.
    bytes[6] = (bytes[6] & 0x0FU) | 0x40U;
    bytes[8] = (bytes[8] & 0x3FU) | 0x80U;

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string id;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            id += '-';
        }
        id += digits[bytes[i] >> 4U];
        id += digits[bytes[i] & 0x0FU];
    }
    return id;
}

}  // namespace kestrune
