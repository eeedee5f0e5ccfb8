#include "platform/linux/SwayMessages.h"

#include <algorithm>
#include <cstring>
#include <utility>

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

void SwayMessages::add(std::string_view bytes) {
    m_bytes.erase(0, std::exchange(m_taken, 0));
    m_bytes += bytes;
}

std::optional<SwayMessage> SwayMessages::take() {
    const std::size_t left = m_bytes.size() - m_taken;
    const std::size_t known = std::min(left, magic.size());
    m_isBroken = m_isBroken || m_bytes.compare(m_taken, known, magic, 0, known) != 0;
    if (m_isBroken || left < headLength) {
        return std::nullopt;
    }
    const std::size_t length = numberAt(m_bytes, m_taken + magic.size());
    if (length > longestPayload) {
        m_isBroken = true;
        return std::nullopt;
    }
    if (left - headLength < length) {
        return std::nullopt;
    }
    SwayMessage message{numberAt(m_bytes, m_taken + magic.size() + sizeof(std::uint32_t)),
                        m_bytes.substr(m_taken + headLength, length)};
    m_taken += headLength + length;
    return message;
}

}  // namespace kestrune
