#include "platform/linux/SwayMessages.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr std::string_view magic = "i3-ipc";
constexpr std::size_t headLength = magic.size() + 2 * sizeof(std::uint32_t);

std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

void append(std::string& bytes, std::uint32_t number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

}  // namespace

std::string swayFrame(std::uint32_t type, std::string_view payload) {
    std::string bytes(magic);
    append(bytes, static_cast<std::uint32_t>(payload.size()));
    append(bytes, type);
    bytes += payload;
    return bytes;
}

std::optional<SwayMessage> SwayMessages::take() {
    const std::size_t known = std::min(m_bytes.size(), magic.size());
    m_isBroken = m_isBroken || m_bytes.compare(0, known, magic, 0, known) != 0;
    if (m_isBroken || m_bytes.size() < headLength) {
        return std::nullopt;
    }
    const std::size_t length = numberAt(m_bytes, magic.size());
    if (length > longestPayload) {
        m_isBroken = true;
        return std::nullopt;
    }
    if (m_bytes.size() - headLength < length) {
        return std::nullopt;
    }
    SwayMessage message{numberAt(m_bytes, magic.size() + sizeof(std::uint32_t)), m_bytes.substr(headLength, length)};
    m_bytes.erase(0, headLength + length);
    return message;
}

}  // namespace kestrune
