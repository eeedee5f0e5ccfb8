#include "platform/linux/SwayMessages.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrune {

namespace {

// sway-ipc(7) shows this message to ask for "exit".
constexpr std::string_view recorded("i3-ipc\x04\0\0\0\0\0\0\0exit", 18);

std::string headOf(std::uint32_t length) {
    std::string bytes = swayFrame(4, {});
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[6 + i] = static_cast<char>(length >> (8 * i) & 0xffU);
    }
    return bytes;
}

}  // namespace

TEST(SwayMessages, aFrameIsWhatTheManualShows) {
    EXPECT_EQ(swayFrame(0, "exit"), recorded);
}

TEST(SwayMessages, areFoundInPiecesOfOneByte) {
    SwayMessages messages;
    const std::string bytes = swayFrame(4, "{}") + swayFrame(0x8000'0003, R"({"change":"focus"})");
    std::vector<SwayMessage> found;
    for (const char byte : bytes) {
        messages.add({&byte, 1});
        while (auto message = messages.take()) {
            found.push_back(*message);
        }
    }
    EXPECT_EQ(found, (std::vector<SwayMessage>{{4, "{}"}, {0x8000'0003, R"({"change":"focus"})"}}));
    EXPECT_FALSE(messages.isBroken());
}

TEST(SwayMessages, severalAtOnceAreTakenOneByOne) {
    SwayMessages messages;
    messages.add(swayFrame(2, "a") + swayFrame(4, "") + swayFrame(2, "c").substr(0, 14));
    EXPECT_EQ(messages.take(), (SwayMessage{2, "a"}));
    EXPECT_EQ(messages.take(), (SwayMessage{4, ""}));
    EXPECT_EQ(messages.take(), std::nullopt);
    EXPECT_FALSE(messages.isBroken());
}

TEST(SwayMessages, anotherMagicTextBreaksTheConnectionAtItsFirstByte) {
    SwayMessages messages;
    messages.add("i3-ipx");
    EXPECT_EQ(messages.take(), std::nullopt);
    EXPECT_TRUE(messages.isBroken());
    messages.add(swayFrame(4, "{}"));
    EXPECT_EQ(messages.take(), std::nullopt);
}

TEST(SwayMessages, aLongRowOfTinyOnesIsTakenWithoutMovingTheRestEachTime) {
    constexpr std::size_t count = 1'000'000;
    const std::string tiny = swayFrame(7, {});
    std::string bytes;
    bytes.reserve(count * tiny.size());
    for (std::size_t i = 0; i < count; ++i) {
        bytes += tiny;
    }
    SwayMessages messages;
    messages.add(bytes);
    std::size_t taken = 0;
    while (messages.take()) {
        ++taken;
    }
    EXPECT_EQ(taken, count);
    messages.add(swayFrame(4, "{}"));
    EXPECT_EQ(messages.take(), (SwayMessage{4, "{}"}));
}

TEST(SwayMessages, aPayloadOfOneMebibyteIsWaitedFor) {
    SwayMessages messages;
    messages.add(headOf(std::uint32_t{1} << 20U));
    EXPECT_EQ(messages.take(), std::nullopt);
    EXPECT_FALSE(messages.isBroken());
}

TEST(SwayMessages, aLongerPayloadIsNotWaitedFor) {
    for (const std::uint32_t length : {(std::uint32_t{1} << 20U) + 1, std::uint32_t{0xffff'ffff}}) {
        SwayMessages messages;
        messages.add(headOf(length));
        EXPECT_EQ(messages.take(), std::nullopt);
        EXPECT_TRUE(messages.isBroken());
    }
}

}  // namespace kestrune
