#include "platform/linux/LinuxPowerSources.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "platform/linux/LinuxPowerSupply.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

LinuxPowerSupply battery(const std::string& status) {
    LinuxPowerSupply supply;
    supply.type = "Battery";
    supply.present = "1";
    supply.status = status;
    supply.energyNow = "30000000";
    supply.energyFull = "60000000";
    supply.capacity = "49";
    return supply;
}

LinuxPowerSupply adapter(const std::string& type, const std::string& online) {
    LinuxPowerSupply supply;
    supply.type = type;
    supply.online = online;
    return supply;
}

std::optional<std::string> stateOf(const std::vector<LinuxPowerSupply>& supplies) {
    return batteriesAmong(supplies).at(0).state;
}

TEST(LinuxPowerSupply, energyComesBeforeChargeBeforePercent) {
    LinuxPowerSupply supply = battery("Discharging");
    supply.chargeNow = "1";
    supply.chargeFull = "4";
    EXPECT_EQ(batteriesAmong({supply}).at(0), (PowerSource{30'000'000, 60'000'000, "Battery Power"}));
    supply.energyNow.reset();
    EXPECT_EQ(batteriesAmong({supply}).at(0), (PowerSource{1, 4, "Battery Power"}));
    supply.chargeFull = "0";
    EXPECT_EQ(batteriesAmong({supply}).at(0), (PowerSource{49, 100, "Battery Power"}));
    supply.capacity = "about half";
    EXPECT_EQ(batteriesAmong({supply}).at(0), (PowerSource{std::nullopt, 100, "Battery Power"}));
}

TEST(LinuxPowerSupply, batteriesOfMiceAndEmptyBaysAreLeftOut) {
    LinuxPowerSupply mouse = battery("Discharging");
    mouse.scope = "Device";
    LinuxPowerSupply emptyBay = battery("Unknown");
    emptyBay.present = "0";
    EXPECT_TRUE(batteriesAmong({mouse, emptyBay, adapter("Mains", "1"), {}}).empty());
    LinuxPowerSupply own = battery("Full");
    own.scope = "System";
    EXPECT_EQ(batteriesAmong({mouse, own, emptyBay}).size(), 1U);
}

TEST(LinuxPowerSupply, adapterThatIsOnlineMeansAcPowerWhateverTheBatterySays) {
    for (const char* const status : {"Charging", "Full", "Not charging", "Unknown", "Discharging"}) {
        EXPECT_EQ(stateOf({adapter("Mains", "1"), battery(status)}), "AC Power") << status;
        EXPECT_EQ(stateOf({battery(status), adapter("USB", "0"), adapter("USB", "1")}), "AC Power") << status;
    }
}

TEST(LinuxPowerSupply, adaptersThatAreAllOfflineMeanBatteryPower) {
    for (const char* const status : {"Full", "Not charging", "Unknown", "Discharging"}) {
        EXPECT_EQ(stateOf({adapter("Mains", "0"), battery(status)}), "Battery Power") << status;
    }
    EXPECT_EQ(stateOf({adapter("Mains", "0"), battery("Charging")}), "AC Power");
}

TEST(LinuxPowerSupply, withoutAnAdapterTheStatusDecides) {
    EXPECT_EQ(stateOf({battery("Charging")}), "AC Power");
    EXPECT_EQ(stateOf({battery("Full")}), "AC Power");
    EXPECT_EQ(stateOf({battery("Not charging")}), "AC Power");
    EXPECT_EQ(stateOf({battery("Discharging")}), "Battery Power");
    EXPECT_EQ(stateOf({battery("Unknown")}), std::nullopt);
}

// A tree in the shape of /sys/class/power_supply.
void addSupply(const TemporaryFolder& root, const std::string& name,
               const std::map<std::string, std::string>& attributes) {
    std::filesystem::create_directory(root.path(name));
    for (const auto& [attribute, value] : attributes) {
        static_cast<void>(root.write(name + "/" + attribute, value + "\n"));
    }
}

TEST(LinuxPowerSources, readsBatteriesInTheOrderOfTheirNames) {
    const TemporaryFolder root;
    addSupply(root, "BAT1", {{"type", "Battery"}, {"status", "Full"}, {"capacity", "99"}});
    addSupply(root, "AC", {{"type", "Mains"}, {"online", "1"}});
    addSupply(
        root, "BAT0",
        {{"type", "Battery"}, {"present", "1"}, {"status", "Charging"}, {"energy_now", "5"}, {"energy_full", "9"}});
    addSupply(root, "hidpp_battery_0", {{"type", "Battery"}, {"scope", "Device"}, {"capacity", "50"}});
    LinuxPowerSources sources(root.path());
    EXPECT_EQ(sources.sources(), (std::vector<PowerSource>{{5, 9, "AC Power"}, {99, 100, "AC Power"}}));
}

TEST(LinuxPowerSources, everyCallReadsTheBatteryAnew) {
    const TemporaryFolder root;
    addSupply(root, "BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "80"}});
    LinuxPowerSources sources(root.path());
    EXPECT_EQ(sources.sources().at(0).currentCapacity, 80);
    static_cast<void>(root.write("BAT0/capacity", "79\n"));
    EXPECT_EQ(sources.sources().at(0).currentCapacity, 79);
    std::filesystem::remove_all(root.path("BAT0"));
    EXPECT_TRUE(sources.sources().empty());
}

TEST(LinuxPowerSources, machineWithoutABatteryIsNotLookedAtEachTime) {
    const TemporaryFolder root;
    LinuxPowerSources patient(root.path(), std::chrono::hours(1));
    LinuxPowerSources eager(root.path(), std::chrono::milliseconds(0));
    EXPECT_TRUE(patient.sources().empty());
    EXPECT_TRUE(eager.sources().empty());
    addSupply(root, "BAT0", {{"type", "Battery"}, {"capacity", "80"}});
    EXPECT_TRUE(patient.sources().empty());
    EXPECT_EQ(eager.sources().size(), 1U);
}

TEST(LinuxPowerSources, systemWithoutTheFolderHasNoBattery) {
    LinuxPowerSources sources("/does/not/exist");
    EXPECT_TRUE(sources.sources().empty());
}

}  // namespace
}  // namespace kestrune
