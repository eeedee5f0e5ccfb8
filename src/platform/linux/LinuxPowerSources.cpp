#include "platform/linux/LinuxPowerSources.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/linux/LinuxPowerSupply.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

namespace {

std::optional<std::string> attribute(const std::string& folder, const char* name) {
    constexpr std::size_t longest = 64;
    LinuxStatusFile file(folder + "/" + name);
    std::optional<std::string_view> text = file.read(longest);
    if (!text) {
        return std::nullopt;
    }
    return std::string(text->substr(0, text->find('\n')));
}

LinuxPowerSupply readSupply(const std::string& folder) {
    LinuxPowerSupply supply;
    supply.type = attribute(folder, "type");
    supply.scope = attribute(folder, "scope");
    supply.online = attribute(folder, "online");
    if (supply.type != "Battery") {
        return supply;
    }
    supply.present = attribute(folder, "present");
    supply.status = attribute(folder, "status");
    supply.energyNow = attribute(folder, "energy_now");
    supply.energyFull = attribute(folder, "energy_full");
    supply.chargeNow = attribute(folder, "charge_now");
    supply.chargeFull = attribute(folder, "charge_full");
    supply.capacity = attribute(folder, "capacity");
    return supply;
}

std::vector<std::string> supplyFolders(const std::string& root) {
    std::vector<std::string> folders;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(root, error), end; !error && entry != end; entry.increment(error)) {
        folders.push_back(entry->path().string());
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

}  // namespace

LinuxPowerSources::LinuxPowerSources(std::string root, std::chrono::milliseconds emptyListAge)
    : m_root(std::move(root)), m_emptyListAge(emptyListAge) {
}

std::vector<PowerSource> LinuxPowerSources::sources() {
    const auto now = std::chrono::steady_clock::now();
    if (m_foundEmptyAt && now - *m_foundEmptyAt < m_emptyListAge) {
        return {};
    }
    std::vector<LinuxPowerSupply> supplies;
    for (const std::string& folder : supplyFolders(m_root)) {
        supplies.push_back(readSupply(folder));
    }
    std::vector<PowerSource> batteries = batteriesAmong(supplies);
    m_foundEmptyAt = batteries.empty() ? std::optional(now) : std::nullopt;
    return batteries;
}

}  // namespace kestrune
