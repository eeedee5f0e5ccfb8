// Moves an item to the Trash of macOS over and over, with stand-ins for that system's calls, while other processes
// exchange what lies on the way for a link or for another folder: MacSwapAttack WORKFOLDER RUNS. After every run it
// looks where everything is. Exit status 0 when no run went wrong.
#include <fcntl.h>
#include <sched.h>
#include <stdio.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "platform/macos/MacTrash.h"
#include "platform/macos/MacTrashRecord.h"
#include "tests/attack/Attacker.h"
#include "tests/platform/macos/FakeMacTrashItem.h"
#include "tests/platform/macos/fake_darwin/FakeFiles.h"

namespace {

namespace fs = std::filesystem;
using kestrune::FileIdentity;
using kestrune::attack::Attacker;
using kestrune::attack::contentOf;
using kestrune::attack::inodeOf;
using kestrune::attack::writeFile;

struct Scenario {
    std::string name;
    std::string place;          ///< what is exchanged, below home
    std::string decoy;          ///< what takes its place, below home
    std::string linksTo;        ///< below the work folder; empty for a decoy that is a folder of its own
    std::string victimsItem;    ///< below the victim: what would move in the item's stead; empty when nothing would
    bool tellsLocation = true;  ///< whether the system says where the item went
};

const std::vector<Scenario> scenarios = {
    {"the folder for a link", "cache", "decoy", "victim", "npm"},
    {"the folder above for a link", "lib/cache", "lib/decoy", "victim", "npm"},
    {"the item for a link", "cache/npm", "cache/decoy", "victim", ""},
    {"the item for the victim itself", "cache/npm", "cache/decoy", "", ""},
    {"the folder for the victim's folder", "cache", "decoy", "", "npm"},
    {"the folder above for the victim's folder", "lib", "decoy", "", "cache/npm"},
    {"the Trash for an own link", ".Trash", ".decoy", "victim", ""},
    {"the Trash for another folder", ".Trash", ".decoy", "", ""},
    {"the folder for a link, and the system tells nothing", "cache", "decoy", "victim", "npm", false},
};

struct Tally {
    int runs = 0;
    int moved = 0;
    int refused = 0;
    int told = 0;  ///< another item lies in the Trash, and the error says so
    int wrong = 0;
};

class Arena final {
public:
    Arena(std::string folder, Scenario scenario)
        : m_folder(std::move(folder)),
          m_scenario(std::move(scenario)),
          m_home(m_folder + "/home"),
          m_item(m_scenario.place.starts_with("lib") ? "lib/cache/npm" : "cache/npm"),
          m_decoy(m_home + "/" + m_scenario.decoy),
          m_victim(m_scenario.linksTo.empty() ? m_decoy : m_folder + "/" + m_scenario.linksTo) {}

    /// Everything as it is before an attacked run.
    void build() {
        fs::remove_all(m_folder);
        fs::create_directories(m_home + "/.Trash");
        fs::create_directories(m_home + "/" + m_item);
        writeFile(m_home + "/" + m_item + "/content", "item");
        fs::create_directories(m_victim + "/" + m_scenario.victimsItem);
        writeFile(m_victim + "/" + m_scenario.victimsItem + "/content", "victim");
        if (!m_scenario.linksTo.empty()) {
            fs::create_directory_symlink(m_victim, m_decoy);
        }
        m_itemInode = inodeOf(m_home + "/" + m_item);
        m_decoyInode = inodeOf(m_decoy);
    }

    /// One attacked run and the look at what it left.
    void run(Tally& tally) {
        kestrune::FakeMacTrashItem system(m_home + "/.Trash");
        system.tellsLocation = m_scenario.tellsLocation;
        if (tally.runs % 2 == 1) {
            system.beforeRename = [this] { waitForDecoy(); };
        }
        kestrune::MacTrash trash(system);
        const auto expected = trash.identity(m_home, m_item);
        auto result = [&] {
            const Attacker attacker(m_home + "/" + m_scenario.place, m_decoy);
            return trash.moveToTrash({m_home, m_item, expected});
        }();
        restoreNames();
        ++tally.runs;
        const bool told = !result.ok() && saysInTrash(result.error());
        const std::string wrong = result.ok() ? judgeMoved(result.value().location) : judgeFailure(result.error());
        const std::string all = wrong + (told ? "" : judgeVictim());
        tally.moved += result.ok() ? 1 : 0;
        tally.told += told ? 1 : 0;
        tally.refused += result.ok() ? 0 : 1;
        if (!all.empty()) {
            ++tally.wrong;
            std::cout << "WRONG (" << m_scenario.name << "): " << all << " reported "
                      << (result.ok() ? result.value().location : result.error().message) << '\n';
        }
    }

private:
    static bool saysInTrash(const kestrune::TrashError& error) {
        return error.message.starts_with("This item is in the Trash");
    }

    /// Keeps the system busy between its look at the path and its rename until the attacker has struck.
    void waitForDecoy() const {
        constexpr int longest = 20'000;
        const std::string place = m_home + "/" + m_scenario.place;
        for (int i = 0; i < longest && inodeOf(place) != m_decoyInode; ++i) {
            ::sched_yield();
        }
    }

    /// Exchanges the two names once more when the attacker stopped half way.
    void restoreNames() const {
        const std::string place = m_home + "/" + m_scenario.place;
        if (inodeOf(place) == m_decoyInode) {
            ::renameat2(AT_FDCWD, place.c_str(), AT_FDCWD, m_decoy.c_str(),
                        inodeOf(m_decoy) != 0 ? RENAME_EXCHANGE : RENAME_NOREPLACE);
        }
    }

    /// Where in the arena the item lies; empty when nowhere.
    [[nodiscard]] std::string itemPath() const {
        for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
            if (inodeOf(entry.path().string()) == m_itemInode) {
                return entry.path().string();
            }
        }
        return {};
    }

    [[nodiscard]] std::string judgeMoved(const std::string& location) const {
        const std::string path = itemPath();
        if (path == m_home + "/" + m_item || contentOf(path + "/content") != "item") {
            return "the item did not move;";
        }
        // What is exchanged for another folder goes on being exchanged after a true report.
        const bool trashIsExchanged = m_scenario.place == ".Trash";
        return path == location || trashIsExchanged ? "" : "the item is not where it was said to be: " + path + ";";
    }

    [[nodiscard]] std::string judgeFailure(const kestrune::TrashError& error) const {
        const std::string path = itemPath();
        if (error.failure == kestrune::TrashFailure::locationUnknown) {
            return path == m_home + "/" + m_item ? "the item did not move;" : "";
        }
        if (saysInTrash(error) && path != m_home + "/" + m_item) {
            const bool isInTrash = path == m_home + "/.Trash/npm" || path == m_victim + "/npm";
            return isInTrash ? "" : "the item is not in the Trash but at " + path + ";";
        }
        if (path != m_home + "/" + m_item) {
            return "the item left its place in a failed move: " + path + ";";
        }
        const std::string record = kestrune::fake_darwin::attribute(path, kestrune::MacTrashRecord::attribute);
        return record.empty() ? "" : "a record stayed behind;";
    }

    [[nodiscard]] std::string judgeVictim() const {
        if (inodeOf(m_decoy) != m_decoyInode) {
            return "the decoy moved;";
        }
        return contentOf(m_victim + "/" + m_scenario.victimsItem + "/content") == "victim" ? "" : "the victim moved;";
    }

    const std::string m_folder;
    const Scenario m_scenario;
    const std::string m_home;
    const std::string m_item;
    const std::string m_decoy;
    const std::string m_victim;
    ino_t m_itemInode = 0;
    ino_t m_decoyInode = 0;
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: MacSwapAttack WORKFOLDER RUNS\n";
        return 2;
    }
    fs::create_directories(arguments[1]);
    const std::string folder = fs::canonical(arguments[1]).string() + "/arena";
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
                  << " refused (" << tally.told << " told to be in the Trash), " << tally.wrong << " wrong\n";
        total.runs += tally.runs;
        total.wrong += tally.wrong;
        total.moved += tally.moved;
    }
    fs::remove_all(folder);
    std::cout << "attacked runs: " << total.runs << ", moved: " << total.moved << ", wrong: " << total.wrong << '\n';
    return total.wrong == 0 && total.moved > 0 && total.runs >= runs ? EXIT_SUCCESS : EXIT_FAILURE;
}
