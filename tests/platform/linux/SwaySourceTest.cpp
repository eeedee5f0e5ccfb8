#include "platform/linux/SwaySource.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>

#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/fakes/FakeSway.h"

namespace kestrune {

namespace {

constexpr std::uint32_t runCommand = 0;
constexpr std::uint32_t subscribe = 2;
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t windowEvent = 0x8000'0003;

const std::string tree = R"({"id":1,"nodes":[
    {"id":5,"pid":3132,"app_id":"galculator","shell":"xdg_shell","focused":false},
    {"id":6,"pid":3133,"app_id":"mousepad","shell":"xdg_shell","focused":true},
    {"id":7,"pid":4001,"shell":"xwayland","window_properties":{"class":"XTerm","instance":"xterm"}},
    {"id":8,"pid":3133,"app_id":"mousepad","shell":"xdg_shell"}]})";

std::string focusOn(int pid) {
    return swayFrame(windowEvent, R"({"change":"focus","container":{"id":5,"pid":)" + std::to_string(pid) + "}}");
}

SourcedApplication application(std::int32_t pid, std::vector<std::string> hints) {
    SourcedApplication application;
    application.pid = pid;
    application.hints = std::move(hints);
    return application;
}

class SwaySourceTest : public ::testing::Test {
protected:
    SwaySourceTest() {
        m_sway.answer(getTree, swayFrame(getTree, tree));
        m_sway.answer(subscribe, swayFrame(subscribe, R"({"success":true})"));
        m_sway.answer(runCommand, swayFrame(runCommand, R"([{"success":true}])"));
    }

    void observe() {
        m_source.observeActivation([this](std::int32_t pid) { m_told.push_back(pid); });
    }

    bool isTold(const std::vector<std::int32_t>& pids) {
        return QTest::qWaitFor([&] { return m_told == pids; });
    }

    std::vector<std::string> commands() {
        std::vector<std::string> payloads;
        for (const SwayMessage& message : m_sway.asked()) {
            if (message.type == runCommand) {
                payloads.push_back(message.payload);
            }
        }
        return payloads;
    }

    static bool isMeant() { return true; }

    FakeSway m_sway;
    std::vector<std::int32_t> m_told;
    SwaySource m_source{m_sway.path()};
};

}  // namespace

TEST_F(SwaySourceTest, listsEachProcessOnceWithWhatItsWindowsAreCalled) {
    EXPECT_EQ(m_source.applications(),
              (std::vector<SourcedApplication>{application(3132, {"galculator"}), application(3133, {"mousepad"}),
                                               application(4001, {"XTerm", "xterm"})}));
    EXPECT_TRUE(m_source.isAvailable());
    EXPECT_TRUE(m_source.isComplete());
}

TEST_F(SwaySourceTest, theFocusedWindowIsInFront) {
    EXPECT_EQ(m_source.frontmost(), 3133);
    EXPECT_TRUE(m_source.tellsFrontmost());
    m_sway.answer(getTree, swayFrame(getTree, R"({"id":1,"nodes":[{"id":5,"pid":3132}]})"));
    EXPECT_EQ(m_source.frontmost(), std::nullopt);
}

TEST_F(SwaySourceTest, eachChangeOfTheFrontIsToldOnce) {
    observe();
    m_sway.sendEvent(focusOn(3132));
    EXPECT_TRUE(isTold({3132}));
    m_sway.sendEvent(focusOn(3132));
    m_sway.sendEvent(focusOn(3133));
    EXPECT_TRUE(isTold({3132, 3133}));
}

TEST_F(SwaySourceTest, ofEventsThatCameTogetherTheLastOneCounts) {
    observe();
    m_sway.sendEvent(focusOn(3132) + focusOn(4001) + focusOn(3133) +
                     swayFrame(windowEvent, R"({"change":"title","container":{"id":6,"pid":3132}})"));
    EXPECT_TRUE(isTold({3133}));
}

TEST_F(SwaySourceTest, whatComesRightAfterAnEventIsHeardTogether) {
    observe();
    constexpr int count = 100;
    for (int i = 0; i < count; ++i) {
        m_sway.sendEvent(focusOn(i % 2 == 0 ? 3132 : 3133));
        QCoreApplication::processEvents();
    }
    m_sway.sendEvent(focusOn(4001));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_told.empty() && m_told.back() == 4001; }));
    EXPECT_LT(m_told.size(), count / 2U);
}

TEST_F(SwaySourceTest, whatComesInsteadOfEventsIsHeardInPieces) {
    observe();
    std::string tiny;
    for (int i = 0; i < 30'000; ++i) {
        tiny += swayFrame(7, {});
    }
    // More than one piece, which comes first: what it is followed by waits for the next one.
    std::thread flood([&] { m_sway.sendEvent(tiny + focusOn(3132)); });
    EXPECT_TRUE(isTold({3132}));
    flood.join();
}

TEST_F(SwaySourceTest, eventsAreHeardAgainAfterTheConnectionWasCut) {
    observe();
    m_sway.sendEvent(focusOn(3132));
    ASSERT_TRUE(isTold({3132}));
    m_sway.sendEvent("nonsense");
    ASSERT_TRUE(QTest::qWaitFor([this] {
        (void)m_source.applications();
        m_sway.sendEvent(focusOn(3133));
        return m_told.size() > 1;
    }));
    EXPECT_EQ(m_told, (std::vector<std::int32_t>{3132, 3133}));
}

TEST_F(SwaySourceTest, closingAsksEveryWindowOfTheProcess) {
    EXPECT_TRUE(m_source.close(3133, isMeant));
    EXPECT_EQ(commands(), (std::vector<std::string>{"[con_id=6] kill;[con_id=8] kill;"}));
}

TEST_F(SwaySourceTest, aWindowOfTheXServerIsLeftToIt) {
    EXPECT_FALSE(m_source.close(4001, isMeant));
    EXPECT_FALSE(m_source.close(1, isMeant));
    EXPECT_TRUE(commands().empty());
}

TEST_F(SwaySourceTest, nothingIsSentToANumberThatHasPassedOn) {
    EXPECT_FALSE(m_source.close(3133, [] { return false; }));
    EXPECT_TRUE(commands().empty());
}

TEST_F(SwaySourceTest, aRefusedCommandIsNotDelivered) {
    m_sway.answer(runCommand, swayFrame(runCommand, R"([{"success":false,"error":"No matching node."}])"));
    EXPECT_FALSE(m_source.close(3132, isMeant));
}

TEST_F(SwaySourceTest, anEventBeforeTheReplyIsPassedOver) {
    m_sway.answer(getTree, focusOn(3132) + swayFrame(getTree, tree));
    EXPECT_EQ(m_source.frontmost(), 3133);
}

TEST_F(SwaySourceTest, aReplyThatIsAsLongAsADesktopMayMakeItIsRead) {
    std::string windows;
    for (int i = 1; i <= 1'000; ++i) {
        windows += (i > 1 ? "," : "") + std::string(R"({"id":)") + std::to_string(i) + R"(,"pid":)" +
                   std::to_string(i) + R"(,"app_id":")" + std::string(900, 'a') + "\"}";
    }
    m_sway.answer(getTree, swayFrame(getTree, R"({"nodes":[)" + windows + "]}"));
    EXPECT_EQ(m_source.applications().size(), 1'000U);
}

TEST_F(SwaySourceTest, aHangingDesktopHoldsNobodyUp) {
    const std::string halfReply = swayFrame(getTree, tree).substr(0, 40);
    for (const std::string& bytes : {std::string(), halfReply, std::string("nonsense")}) {
        m_sway.answer(getTree, bytes);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(m_source.isAvailable());
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    }
    EXPECT_TRUE(m_source.applications().empty());
    EXPECT_FALSE(m_source.isComplete());
    EXPECT_EQ(m_source.frontmost(), std::nullopt);
    EXPECT_FALSE(m_source.close(3133, isMeant));
}

TEST(SwaySource, withoutSwayThereIsNothing) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "i3-ipc");
    for (const std::string& path :
         {std::string(), std::string("sway.sock"), folder.path("missing"), file, "/" + std::string(200, 'a')}) {
        SwaySource source(path);
        source.observeActivation([](std::int32_t) {});
        EXPECT_FALSE(source.isAvailable()) << path;
        EXPECT_FALSE(source.tellsFrontmost()) << path;
        EXPECT_TRUE(source.applications().empty()) << path;
    }
}

}  // namespace kestrune
