#include "ui/PortRow.h"

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>

#include "tests/ui/RunningItems.h"

namespace kestrune {

namespace {

using Ports = std::vector<std::string>;

constexpr int wide = 580;    // name and ports side by side
constexpr int narrow = 420;  // the ports under the name

Ports manyPorts() {
    Ports ports;
    for (int port = 3000; port < 3040; ++port) {
        ports.push_back("*:" + std::to_string(port));
    }
    return ports;
}

QImage drawn(const Ports& listeners, int width, const QString& search = {}, bool ended = false) {
    PortRow row;
    row.setSearchSource([search] { return search; });
    row.setState({.item = runningProcess(5521, "server", 100, listeners), .ended = ended});
    row.resize(width, PortRow::heightAt(width));
    return row.grab().toImage();
}

}  // namespace

TEST(PortRow, aSearchedPortThatWouldBeCutOffStandsFirst) {
    Ports searchedFirst = manyPorts();
    searchedFirst.insert(searchedFirst.begin(), searchedFirst.back());
    searchedFirst.pop_back();
    for (const int width : {wide, narrow}) {
        ASSERT_NE(drawn(searchedFirst, width), drawn(manyPorts(), width));
        EXPECT_EQ(drawn(manyPorts(), width, QStringLiteral("3039")), drawn(searchedFirst, width)) << width;
    }
}

TEST(PortRow, allSearchedPortsStandBeforeTheOthersInTheirOrder) {
    Ports searchedFirst = manyPorts();
    std::rotate(searchedFirst.begin(), searchedFirst.begin() + 30, searchedFirst.end());
    EXPECT_EQ(drawn(manyPorts(), wide, QStringLiteral(":303")), drawn(searchedFirst, wide));
}

TEST(PortRow, portsKeepTheirOrderWhileTheSearchedOneShows) {
    EXPECT_EQ(drawn(manyPorts(), wide, QStringLiteral("3001")), drawn(manyPorts(), wide));
    EXPECT_EQ(drawn({"*:1", "*:2"}, wide, QStringLiteral("2")), drawn({"*:1", "*:2"}, wide));
    EXPECT_EQ(drawn(manyPorts(), wide, QStringLiteral("server")), drawn(manyPorts(), wide));
}

TEST(PortRow, whoStopsTheProcessIsToldItsPortsInTheirOrder) {
    PortRow row;
    row.setSearchSource([] { return QStringLiteral("3039"); });
    row.setState({.item = runningProcess(5521, "server", 100, manyPorts())});
    EXPECT_EQ(row.state().item.listeners, manyPorts());
    EXPECT_TRUE(row.accessibleName().startsWith(QStringLiteral("server, PID 5521 · *:3000, *:3001")));
}

TEST(PortRow, anEndedProcessShowsNoPortsAnyMore) {
    for (const int width : {wide, narrow}) {
        ASSERT_NE(drawn({"*:3000"}, width), drawn({"*:8080"}, width));
        EXPECT_EQ(drawn({"*:3000"}, width, {}, true), drawn({"*:8080"}, width, {}, true)) << width;
    }
}

}  // namespace kestrune
