// Moves an item to the Trash over and over while other processes exchange what lies on the way for a link to a victim:
// SwapAttack WORKFOLDER RUNS. After every run it looks where everything is. Exit status 0 when no run went wrong.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "platform/linux/LinuxTrash.h"
#include "platform/linux/TrashInfo.h"
#include "tests/attack/Attacker.h"

namespace {

namespace fs = std::filesystem;
using kestrune::FileIdentity;
using kestrune::attack::Attacker;
using kestrune::attack::contentOf;
using kestrune::attack::inodeOf;
using kestrune::attack::writeFile;

constexpr uid_t somebodyElse = 12345;

struct Scenario {
    std::string name;
    std::string place;      ///< what is exchanged, below home
    std::string decoy;      ///< what takes its place, below home: a link or a folder
    std::string linksTo;    ///< below the work folder; empty for a decoy that is a folder of its own
    uid_t linkOwner = 0;    ///< a foreign link must be refused, an own one may be followed at the Trash only
    bool expected = false;  ///< whether the request names the identity it means
};

const std::vector<Scenario> scenarios = {
    {"the folder for a link", "cache", "decoy", "victim", 0, false},
    {"the folder above for a link", "lib/cache", "lib/decoy", "victim", 0, true},
    {"the item for a link", "cache/npm", "cache/decoy", "victim/npm", 0, false},
    {"the item for the victim itself", "cache/npm", "cache/decoy", "", 0, true},
    {"the folder for the victim's folder", "cache", "decoy", "", 0, true},
    {"the Trash for an own link", ".local/share/Trash", ".local/share/decoy", "victim", 0, true},
    {"the Trash for a foreign link", ".local/share/Trash", ".local/share/decoy", "victim", somebodyElse, true},
    {"the Trash for another folder", ".local/share/Trash", ".local/share/decoy", "", 0, true},
    {"the files folder for a link", ".local/share/Trash/files", ".local/share/Trash/decoy", "victim", 0, true},
    {"the files folder for another folder", ".local/share/Trash/files", ".local/share/Trash/decoy", "", 0, true},
    {"the info folder for a link", ".local/share/Trash/info", ".local/share/Trash/decoy", "victim", 0, true},
    {"the data folder for a link", ".local/share", ".local/decoy", "victim", 0, true},
};

struct Tally {
    int runs = 0;
    int moved = 0;
    int refused = 0;
    int leftInTrash = 0;
    int wrong = 0;
};

class Arena final {
public:
    Arena(std::string folder, Scenario scenario)
        : m_folder(std::move(folder)), m_scenario(std::move(scenario)), m_home(m_folder + "/home") {
        const bool deeper = m_scenario.place.starts_with("lib/");
        m_item = deeper ? "lib/cache/npm" : "cache/npm";
    }

    /// Everything as it is before an attacked run.
    void build() {
        fs::remove_all(m_folder);
        for (const std::string place : {"files", "info"}) {
            fs::create_directories(m_home + "/.local/share/Trash/" + place);
        }
        fs::create_directories(m_home + "/" + m_item);
        writeFile(m_home + "/" + m_item + "/content", "item");
        const std::string decoy = m_home + "/" + m_scenario.decoy;
        const std::string victim = m_scenario.linksTo.empty() ? decoy : m_folder + "/victim";
        makeVictim(victim);
        if (!m_scenario.linksTo.empty()) {
            fs::create_directory_symlink(m_folder + "/" + m_scenario.linksTo, decoy);
            if (::lchown(decoy.c_str(), m_scenario.linkOwner, m_scenario.linkOwner) != 0) {
                std::perror("lchown");
                std::exit(2);
            }
        }
        m_itemInode = inodeOf(m_home + "/" + m_item);
        m_expected = kestrune::LinuxTrash().identity(m_home, m_item);
    }

    /// One attacked run and the look at what it left.
    void run(Tally& tally) {
        kestrune::LinuxTrash trash;
        const auto request = kestrune::TrashRequest{m_home, m_item, m_scenario.expected ? m_expected : std::nullopt};
        auto result = [&] {
            const Attacker attacker(m_home + "/" + m_scenario.place, m_home + "/" + m_scenario.decoy);
            return trash.moveToTrash(request);
        }();
        restoreNames();
        ++tally.runs;
        const std::string wrong = result.ok() ? judgeSuccess(result.value().location) : judgeFailure(result.error());
        tally.moved += result.ok() ? 1 : 0;
        tally.leftInTrash += !result.ok() && saysInTrash(result.error()) ? 1 : 0;
        tally.refused += result.ok() ? 0 : 1;
        const std::string all = wrong + judgeVictim();
        if (!all.empty()) {
            ++tally.wrong;
            std::cout << "WRONG (" << m_scenario.name << "): " << all << " reported "
                      << (result.ok() ? result.value().location : result.error().message) << '\n';
        }
    }

private:
    void makeVictim(const std::string& victim) const {
        const std::string item = m_scenario.place == m_item ? victim : victim + "/npm";
        fs::create_directories(item);
        writeFile(item + "/content", "victim");
        for (const char* inTrash : {"/files", "/info", "/Trash"}) {
            fs::create_directories(victim + inTrash);
            writeFile(victim + inTrash + "/content", "victim");
        }
    }

    /// Exchanges the two names once more when the attacker stopped half way.
    void restoreNames() const {
        const std::string place = m_home + "/" + m_scenario.place;
        const std::string decoy = m_home + "/" + m_scenario.decoy;
        const bool decoyIsAtPlace = m_scenario.linksTo.empty() ? fs::exists(place + "/Trash") : fs::is_symlink(place);
        if (decoyIsAtPlace) {
            ::renameat2(AT_FDCWD, place.c_str(), AT_FDCWD, decoy.c_str(),
                        fs::exists(fs::symlink_status(decoy)) ? RENAME_EXCHANGE : RENAME_NOREPLACE);
        }
    }

    static bool saysInTrash(const kestrune::TrashError& error) {
        return error.message.starts_with("This item is in the Trash");
    }

    /// Whether the item lies at files/NAME of some Trash in the arena, with a record of its own beside it.
    [[nodiscard]] std::string judgeTrashed() const {
        for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
            if (inodeOf(entry.path().string()) != m_itemInode) {
                continue;
            }
            const fs::path files = entry.path().parent_path();
            const std::string record =
                contentOf(files.parent_path() / "info" / (entry.path().filename().string() + ".trashinfo"));
            return kestrune::isTrashInfoOf(record, m_home + "/" + m_item) ? "" : "the item has no record;";
        }
        return "the item is gone;";
    }

    /// location, or the same with the attacker's latest exchange undone: a folder that is exchanged for another one
    /// goes on being exchanged after a true report.
    [[nodiscard]] std::string judgeSuccess(const std::string& location) const {
        const std::string place = m_home + "/" + m_scenario.place;
        std::string exchanged = location;
        if (m_scenario.linksTo.empty() && location.starts_with(place + "/")) {
            exchanged = m_home + "/" + m_scenario.decoy + location.substr(place.size());
        }
        if (inodeOf(location) != m_itemInode && inodeOf(exchanged) != m_itemInode) {
            return "the item is not where it was said to be;";
        }
        if (inodeOf(m_home + "/" + m_item) == m_itemInode) {
            return "the item did not move;";
        }
        return judgeTrashed();
    }

    [[nodiscard]] std::string judgeFailure(const kestrune::TrashError& error) const {
        if (inodeOf(m_home + "/" + m_item) == m_itemInode) {
            return recordsOfOurs() == 0 ? "" : "a record stayed behind;";
        }
        return saysInTrash(error) ? judgeTrashed() : "the item left its place in a failed move;";
    }

    [[nodiscard]] int recordsOfOurs() const {
        int records = 0;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
            records += entry.path().extension() == ".trashinfo" ? 1 : 0;
        }
        return records;
    }

    [[nodiscard]] std::string judgeVictim() const {
        const std::string decoy = m_home + "/" + m_scenario.decoy;
        const std::string victim = m_scenario.linksTo.empty() ? decoy : m_folder + "/victim";
        const std::string item = m_scenario.place == m_item ? victim : victim + "/npm";
        for (const std::string& file : {item, victim + "/files", victim + "/info", victim + "/Trash"}) {
            if (contentOf(file + "/content") != "victim") {
                return "the victim changed: " + file + ";";
            }
        }
        return "";
    }

    const std::string m_folder;
    const Scenario m_scenario;
    const std::string m_home;
    std::string m_item;
    ino_t m_itemInode = 0;
    std::optional<FileIdentity> m_expected;
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 3 || ::geteuid() != 0) {
        std::cerr << "usage, as root: SwapAttack WORKFOLDER RUNS\n";
        return 2;
    }
    const std::string folder = fs::absolute(arguments[1]).string() + "/arena";
    const long runs = std::strtol(arguments[2], nullptr, 10);
    Tally total;
    for (const Scenario& scenario : scenarios) {
        Tally tally;
        Arena arena(folder, scenario);
        const long each = runs / static_cast<long>(scenarios.size()) + 1;
        while (tally.runs < each) {
            arena.build();
            arena.run(tally);
        }
        std::cout << scenario.name << ": " << tally.runs << " runs, " << tally.moved << " moved, " << tally.refused
                  << " refused (" << tally.leftInTrash << " left in the Trash), " << tally.wrong << " wrong\n";
        total.runs += tally.runs;
        total.wrong += tally.wrong;
        total.moved += tally.moved;
    }
    fs::remove_all(folder);
    std::cout << "attacked runs: " << total.runs << ", moved: " << total.moved << ", wrong: " << total.wrong << '\n';
    return total.wrong == 0 && total.runs >= runs ? EXIT_SUCCESS : EXIT_FAILURE;
}
