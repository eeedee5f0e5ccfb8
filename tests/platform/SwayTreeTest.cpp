#include "platform/linux/SwayTree.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

using SwayTree::Window;

// As sway 1.7 answers, without the fields that say where things are drawn.
constexpr std::string_view recorded = R"({"id": 1, "type": "root", "name": "root", "window": null, "focused": false,
 "nodes": [
  {"id": 2147483647, "type": "output", "name": "__i3", "window": null, "nodes": [
    {"id": 2147483646, "type": "workspace", "name": "__i3_scratch", "nodes": [], "floating_nodes": [
      {"id": 9, "type": "floating_con", "focused": false, "window": null, "pid": 77, "app_id": "scratch",
       "shell": "xdg_shell"}]}], "floating_nodes": []},
  {"id": 3, "type": "output", "name": "HEADLESS-1", "nodes": [
    {"id": 4, "type": "workspace", "name": "1", "floating_nodes": [
      {"id": 8, "type": "floating_con", "focused": true, "window": null, "name": "Save", "pid": 3133,
       "app_id": "mousepad", "visible": true, "shell": "xdg_shell"}],
     "nodes": [
      {"id": 5, "type": "con", "focused": false, "window": null, "name": "galculator", "nodes": [],
       "floating_nodes": [], "pid": 3132, "app_id": "galculator", "visible": true, "shell": "xdg_shell"},
      {"id": 6, "type": "con", "focused": false, "window": null, "name": "Untitled 1 - Mousepad", "nodes": [],
       "floating_nodes": [], "pid": 3133, "app_id": "mousepad", "visible": true, "shell": "xdg_shell"},
      {"id": 7, "type": "con", "focused": false, "window": 4194315, "name": "nobody@host", "nodes": [],
       "floating_nodes": [], "pid": 4001, "app_id": null, "visible": true, "shell": "xwayland",
       "window_properties": {"class": "XTerm", "instance": "xterm", "title": "nobody@host",
       "transient_for": null, "window_type": "normal"}}]}], "floating_nodes": []}],
 "floating_nodes": []})";

std::string nested(std::size_t levels) {
    std::string text;
    for (std::size_t i = 0; i < levels; ++i) {
        text += R"({"nodes":[)";
    }
    text += R"({"id":5,"pid":6})";
    for (std::size_t i = 0; i < levels; ++i) {
        text += "]}";
    }
    return text;
}

}  // namespace

TEST(SwayTree, listsTheWindowsWorkspaceByWorkspaceAndFloatingOnesLast) {
    EXPECT_EQ(SwayTree::windows(recorded), (std::vector<Window>{
                                               {9, 77, {"scratch"}, false, true},
                                               {5, 3132, {"galculator"}, false, true},
                                               {6, 3133, {"mousepad"}, false, true},
                                               {7, 4001, {"XTerm", "xterm"}, false, false},
                                               {8, 3133, {"mousepad"}, true, true},
                                           }));
}

TEST(SwayTree, aContainerWithoutAProcessIsNoWindow) {
    // i3 names no processes.
    EXPECT_TRUE(SwayTree::windows(R"({"id":1,"nodes":[{"id":94,"window":4194315,"focused":true,
        "window_properties":{"class":"XTerm","instance":"xterm"}}]})")
                    .empty());
    for (const char* pid : {"0", "-1", "1.5", "4294967297", "1e300", "\"77\"", "null", "[77]"}) {
        EXPECT_TRUE(SwayTree::windows(std::string(R"({"id":5,"pid":)") + pid + "}").empty()) << pid;
    }
}

TEST(SwayTree, aWindowWithoutANumberOfItsOwnIsLeftOut) {
    EXPECT_TRUE(SwayTree::windows(R"({"pid":77})").empty());
    EXPECT_TRUE(SwayTree::windows(R"({"id":"5","pid":77})").empty());
    EXPECT_TRUE(SwayTree::windows(R"({"id":-5,"pid":77})").empty());
}

TEST(SwayTree, fieldsOfAnotherKindAreReadAsMissing) {
    EXPECT_EQ(SwayTree::windows(R"({"id":5,"pid":77,"app_id":{"a":1},"window_properties":[1],"focused":"yes",
        "shell":7,"nodes":"none","floating_nodes":[1,null,"x"]})"),
              (std::vector<Window>{{5, 77, {}, false, false}}));
}

TEST(SwayTree, whatIsNoJsonHoldsNoWindows) {
    for (const char* text : {"", "[]", "null", "{", R"({"id":5,"pid":77)", "\xff\xfe"}) {
        EXPECT_TRUE(SwayTree::windows(text).empty()) << text;
    }
}

TEST(SwayTree, deepNestingIsReadAsFarAsADesktopMayGoAndRefusedBeyond) {
    EXPECT_EQ(SwayTree::windows(nested(200)).size(), 1U);
    EXPECT_TRUE(SwayTree::windows(nested(100'000)).empty());
}

TEST(SwayTree, aFocusEventNamesTheProcess) {
    EXPECT_EQ(SwayTree::focusedProcess(R"({"change":"focus","container":{"id":5,"pid":3132,"focused":true}})"), 3132);
}

TEST(SwayTree, otherEventsNameNone) {
    for (const char* text :
         {R"({"change":"title","container":{"id":5,"pid":3132}})", R"({"change":"focus","container":{"id":5}})",
          R"({"change":"focus","container":null})", R"([{"change":"focus"}])", "", "focus"}) {
        EXPECT_EQ(SwayTree::focusedProcess(text), std::nullopt) << text;
    }
}

TEST(SwayTree, aCommandIsDeliveredWhenOneOfItsPartsWas) {
    EXPECT_TRUE(SwayTree::isSuccess(R"({"success": true})"));
    EXPECT_TRUE(SwayTree::isSuccess(R"([{"success": false, "error": "No matching node."}, {"success": true}])"));
    EXPECT_FALSE(SwayTree::isSuccess(R"([{"success": false, "error": "No matching node."}])"));
    for (const char* text : {"", "[]", "{}", R"({"success": "true"})", R"([true])"}) {
        EXPECT_FALSE(SwayTree::isSuccess(text)) << text;
    }
}

TEST(SwayTree, ofMoreWindowsThanAnyDesktopShowsTheFirstAreListed) {
    std::string windows;
    for (std::size_t i = 1; i <= SwayTree::mostWindows + 1; ++i) {
        windows += (i > 1 ? "," : "") + std::string(R"({"id":)") + std::to_string(i) + R"(,"pid":7})";
    }
    const std::vector<Window> found = SwayTree::windows(R"({"nodes":[)" + windows + "]}");
    ASSERT_EQ(found.size(), SwayTree::mostWindows);
    EXPECT_EQ(found.back().container, 1'024);
}

}  // namespace kestrune
