#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrune {

/// One message of sway-ipc(7); of an event the type has its highest bit set.
struct SwayMessage {
    std::uint32_t type = 0;
    std::string payload;

    bool operator==(const SwayMessage&) const = default;
};

/// The bytes of a message: magic text, length and type in the machine's byte order, payload.
[[nodiscard]] std::string swayFrame(std::uint32_t type, std::string_view payload);

/// Puts messages together from bytes as they arrive, in pieces of any size. Any thread, one at a time.
class SwayMessages final {
public:
    /// A longer payload breaks the connection: the windows of a desktop take some ten thousand bytes.
    static constexpr std::size_t longestPayload = std::size_t{1} << 20U;

    void add(std::string_view bytes);

    /// The next whole message; nothing while it is not all there, and nothing ever again once broken.
    [[nodiscard]] std::optional<SwayMessage> take();

    /// True once something arrived that is no message.
    [[nodiscard]] bool isBroken() const { return m_isBroken; }

private:
    std::string m_bytes;
    std::size_t m_taken = 0;  ///< how many of them, at the front, take() has passed
    bool m_isBroken = false;
};

}  // namespace kestrune
