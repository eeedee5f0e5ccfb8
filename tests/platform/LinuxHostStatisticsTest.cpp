#include "platform/linux/LinuxHostStatistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <sstream>

#include "base/Text.h"
#include "engine/TelemetryFormulas.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxVolumeInfo.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

// A tree in the shape of /sys/class/net.
class NetworkTree final {
public:
    void add(const std::string& name, const std::string& type, bool hasDevice, std::uint64_t received = 0,
             std::uint64_t sent = 0) const {
        fs::create_directories(m_folder.path("class/net/" + name + "/statistics"));
        set(name, "type", type);
        set(name, "flags", "0x1003");
        set(name, "statistics/rx_bytes", std::to_string(received));
        set(name, "statistics/tx_bytes", std::to_string(sent));
        if (hasDevice) {
            fs::create_directory_symlink("../../..", m_folder.path("class/net/" + name + "/device"));
        }
    }

    void set(const std::string& name, const std::string& attribute, const std::string& value) const {
        static_cast<void>(m_folder.write("class/net/" + name + "/" + attribute, value + "\n"));
    }

    void setMaster(const std::string& name, const std::string& master) const {
        fs::create_directory_symlink("../" + master, m_folder.path("class/net/" + name + "/master"));
    }

    void remove(const std::string& name) const { fs::remove_all(m_folder.path("class/net/" + name)); }

    [[nodiscard]] std::string root() const { return m_folder.path(); }

    [[nodiscard]] LinuxHostStatistics statistics(std::chrono::milliseconds age = std::chrono::hours(1)) const {
        return LinuxHostStatistics("/proc", root(), age);
    }

private:
    TemporaryFolder m_folder;
};

std::vector<std::string> names(const std::optional<std::vector<NetworkInterface>>& interfaces) {
    std::vector<std::string> found;
    for (const NetworkInterface& interface : interfaces.value()) {
        found.push_back(interface.name);
    }
    return found;
}

TEST(LinuxHostStatistics, onlyPhysicalEthernetAndWiFiAdaptersAreTold) {
    const NetworkTree tree;
    tree.add("eth0", "1", true, 10, 20);
    tree.add("wlp3s0", "1", true, 1, 2);
    tree.add("lo", "772", false);
    tree.add("docker0", "1", false);
    tree.add("veth12", "1", false);
    tree.add("tun0", "65534", false);
    tree.add("bond0", "1", false);
    tree.add("can0", "280", true);
    LinuxHostStatistics statistics = tree.statistics();
    const auto interfaces = statistics.networkInterfaces();
    EXPECT_EQ(names(interfaces), (std::vector<std::string>{"eth0", "wlp3s0"}));
    EXPECT_EQ(interfaces->front(), (NetworkInterface{"eth0", true, true, InterfaceBytes{10, 20}}));
}

TEST(LinuxHostStatistics, portOfAnotherPhysicalAdapterIsNotCountedTwice) {
    const NetworkTree tree;
    tree.add("eth0", "1", true, 10, 20);
    tree.add("enP1s1", "1", true, 10, 20);
    tree.setMaster("enP1s1", "eth0");
    tree.add("bond0", "1", false, 5, 5);
    tree.add("eth1", "1", true, 5, 5);
    tree.setMaster("eth1", "bond0");
    LinuxHostStatistics statistics = tree.statistics();
    EXPECT_EQ(names(statistics.networkInterfaces()), (std::vector<std::string>{"eth0", "eth1"}));
}

TEST(LinuxHostStatistics, countersAndFlagsAreReadAnewEachTimeInAllTheirBits) {
    const NetworkTree tree;
    tree.add("eth0", "1", true, 1, 2);
    LinuxHostStatistics statistics = tree.statistics();
    EXPECT_TRUE(statistics.networkInterfaces()->at(0).isUp);
    tree.set("eth0", "statistics/rx_bytes", "18446744073709551615");
    tree.set("eth0", "flags", "0x1002");
    const NetworkInterface adapter = statistics.networkInterfaces()->at(0);
    EXPECT_FALSE(adapter.isUp);
    EXPECT_EQ(adapter.bytes, (InterfaceBytes{18'446'744'073'709'551'615U, 2}));
}

TEST(LinuxHostStatistics, listOfAdaptersIsKeptUntilItIsOld) {
    const NetworkTree tree;
    tree.add("eth0", "1", true);
    LinuxHostStatistics keeping = tree.statistics();
    LinuxHostStatistics looking = tree.statistics(std::chrono::milliseconds(0));
    EXPECT_EQ(names(keeping.networkInterfaces()).size(), 1U);
    EXPECT_EQ(names(looking.networkInterfaces()).size(), 1U);
    tree.add("usb0", "1", true);
    EXPECT_EQ(names(keeping.networkInterfaces()).size(), 1U);
    EXPECT_EQ(names(looking.networkInterfaces()).size(), 2U);
}

TEST(LinuxHostStatistics, counterThatCannotBeReadMakesItLookForAdaptersAgain) {
    const NetworkTree tree;
    tree.add("eth0", "1", true);
    tree.add("usb0", "1", true);
    LinuxHostStatistics statistics = tree.statistics();
    EXPECT_EQ(names(statistics.networkInterfaces()).size(), 2U);
    tree.set("usb0", "statistics/rx_bytes", "gone");
    tree.remove("usb0");
    EXPECT_EQ(names(statistics.networkInterfaces()), std::vector<std::string>{"eth0"});
}

TEST(LinuxHostStatistics, adapterWithUnreadableCountersHasNone) {
    const NetworkTree tree;
    tree.add("eth0", "1", true, 3, 4);
    tree.add("eth1", "1", true);
    tree.set("eth1", "statistics/tx_bytes", "garbage");
    LinuxHostStatistics statistics = tree.statistics();
    const auto interfaces = statistics.networkInterfaces();
    EXPECT_EQ(interfaces->at(0).bytes, (InterfaceBytes{3, 4}));
    EXPECT_EQ(interfaces->at(1).bytes, std::nullopt);
}

TEST(LinuxHostStatistics, systemWithoutTheFilesTellsNothing) {
    const TemporaryFolder empty;
    LinuxHostStatistics statistics(empty.path(), empty.path());
    EXPECT_EQ(statistics.memory(), std::nullopt);
    EXPECT_EQ(statistics.cpuTicks(), std::nullopt);
    EXPECT_EQ(statistics.bootTime(), std::nullopt);
    EXPECT_EQ(statistics.networkInterfaces(), std::nullopt);
}

TEST(LinuxHostStatistics, fileThatAppearsLaterIsReadThen) {
    const TemporaryFolder root;
    LinuxHostStatistics statistics(root.path(), root.path());
    EXPECT_EQ(statistics.cpuTicks(), std::nullopt);
    static_cast<void>(root.write("stat", "cpu  1 2 3 4 0 0 0 0 0 0\nbtime 12\n"));
    EXPECT_EQ(statistics.cpuTicks(), (CpuTicks{1, 3, 4, 2}));
    EXPECT_EQ(statistics.bootTime(), 12);
}

// The same machine through two ways of asking.

TEST(LinuxHostStatistics, memoryAgreesWithFree) {
    LinuxHostStatistics statistics;
    LinuxProcessRunner runner;
    const ProcessResult free = runner.run("/usr/bin/free", {"-b"});
    const MemorySummary summary = TelemetryFormulas::memorySummary(TelemetryFormulas::vmStat(statistics.memory()));
    ASSERT_EQ(free.status, 0);
    // total, used, free, shared, buff/cache, available
    const std::vector<std::string> fields = splitAtWhiteSpace(split(free.output, '\n').at(1));
    constexpr double mebibyte = 1'048'576;
    EXPECT_NEAR(summary.totalMB, std::stod(fields.at(1)) / mebibyte, 0.01);
    EXPECT_NEAR(summary.freeMB, std::stod(fields.at(6)) / mebibyte, summary.totalMB / 20);
}

TEST(LinuxHostStatistics, processorTicksLieBetweenTwoReadingsOfTheFile) {
    const auto totalByHand = [] {
        std::istringstream line(TemporaryFolder::contentOf("/proc/stat"));
        std::string label;
        double total = 0;
        line >> label;
        for (int field = 0; field < 8; ++field) {
            double ticks = 0;
            line >> ticks;
            total += ticks;
        }
        return total;
    };
    LinuxHostStatistics statistics;
    const double before = totalByHand();
    const CpuTicks ticks = statistics.cpuTicks().value();
    const double after = totalByHand();
    const double total = ticks.user + ticks.system + ticks.idle + ticks.nice;
    // Waiting for a disk may go backwards by a few ticks: proc(5).
    EXPECT_GE(total, before - 5);
    EXPECT_LE(total, after + 5);
}

TEST(LinuxHostStatistics, bootTimeAgreesWithTheUptime) {
    LinuxHostStatistics statistics;
    const double uptime = std::stod(TemporaryFolder::contentOf("/proc/uptime"));
    EXPECT_NEAR(static_cast<double>(std::time(nullptr) - statistics.bootTime().value()), uptime, 3);
}

TEST(LinuxHostStatistics, networkCountersLieBetweenTwoReadingsOfAnotherFile) {
    // "name: received … (8 fields) sent …"
    const auto receivedByHand = [](const std::string& name) {
        for (const std::string& line : split(TemporaryFolder::contentOf("/proc/net/dev"), '\n')) {
            const std::vector<std::string> fields = splitAtWhiteSpace(line);
            if (!fields.empty() && fields[0] == name + ":") {
                return std::stoull(fields.at(1));
            }
        }
        return 0ULL;
    };
    LinuxHostStatistics statistics;
    for (const std::string& name : names(statistics.networkInterfaces())) {
        const std::uint64_t before = receivedByHand(name);
        const auto interfaces = statistics.networkInterfaces().value();
        const std::uint64_t after = receivedByHand(name);
        const auto adapter = std::find_if(interfaces.begin(), interfaces.end(),
                                          [&name](const NetworkInterface& one) { return one.name == name; });
        ASSERT_NE(adapter, interfaces.end());
        EXPECT_GE(adapter->bytes->received, before);
        EXPECT_LE(adapter->bytes->received, after);
    }
}

TEST(LinuxVolumeInfo, capacityAgreesWithDf) {
    LinuxProcessRunner runner;
    LinuxVolumeInfo volumes;
    const ProcessResult df = runner.run("/bin/df", {"-B1", "--output=size,avail", "/"});
    const VolumeCapacity capacity = volumes.capacity("/").value();
    const std::vector<std::string> fields = splitAtWhiteSpace(split(df.output, '\n').at(1));
    EXPECT_EQ(capacity.total, std::stoll(fields.at(0)));
    EXPECT_NEAR(static_cast<double>(capacity.available.value()), std::stod(fields.at(1)), 1e9);
}

TEST(LinuxVolumeInfo, pathThatDoesNotExistHasNoCapacity) {
    LinuxVolumeInfo volumes;
    EXPECT_EQ(volumes.capacity("/does/not/exist"), std::nullopt);
}

}  // namespace
}  // namespace kestrune
