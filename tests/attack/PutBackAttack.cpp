// Puts an item back from the Trash over and over while another process exchanges what lies on the way:
// PutBackAttack WORKFOLDER RUNS. After every run it looks where everything is. Exit status 0 when no run went wrong.
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
using kestrune::attack::Attacker;
using kestrune::attack::contentOf;
using kestrune::attack::inodeOf;
using kestrune::attack::writeFile;

constexpr uid_t somebodyElse = 12345;

struct Scenario {
    std::string name;
    std::string place;  ///< what is exchanged, below home
    std::string decoy;  ///< what takes its place, below home
    bool isLink = false;
    uid_t linkOwner = 0;
};

const std::string trash = ".local/share/Trash";

// A decoy that is a link leads to the victim, any other is a victim of its own.
const std::vector<Scenario> scenarios = {
    {"the folder for a link", "lib/cache", "lib/decoy", true},
    {"the folder for another folder", "lib/cache", "lib/decoy"},
    {"the folder above for a link", "lib", "decoy", true},
    {"the folder above for another folder", "lib", "decoy"},
    {"what arrived for something else", "lib/cache/npm", "lib/cache/decoy"},
    {"what arrived for a link", "lib/cache/npm", "lib/cache/decoy", true},
    {"what arrived for something elsewhere", "lib/cache/npm", "elsewhere"},
    {"the item for something elsewhere", trash + "/files/npm", "elsewhere"},
    {"the item for another item", trash + "/files/npm", trash + "/files/decoy"},
    {"the item for a link", trash + "/files/npm", trash + "/files/decoy", true},
    {"the record for another record", trash + "/info/npm.trashinfo", trash + "/info/decoy.trashinfo"},
    {"the record for a link", trash + "/info/npm.trashinfo", trash + "/info/decoy.trashinfo", true},
    {"the files folder for another folder", trash + "/files", trash + "/decoy"},
    {"the files folder for a link", trash + "/files", trash + "/decoy", true},
    {"the info folder for another folder", trash + "/info", trash + "/decoy"},
    {"the info folder for a link", trash + "/info", trash + "/decoy", true},
    {"the Trash for another Trash", trash, ".local/share/decoy"},
    {"the Trash for an own link", trash, ".local/share/decoy", true},
    {"the Trash for a foreign link", trash, ".local/share/decoy", true, somebodyElse},
    {"the data folder for a link", ".local/share", ".local/decoy", true},
};

struct Tally {
    int runs = 0;
    int back = 0;
    int halfWay = 0;
    int recordsLeft = 0;
    int wrong = 0;
};

class Arena final {
public:
    Arena(const std::string& folder, Scenario scenario)
        : m_folder(folder),
          m_scenario(std::move(scenario)),
          m_home(folder + "/home"),
          m_place(m_home + "/" + m_scenario.place),
          m_decoy(m_home + "/" + m_scenario.decoy),
          m_victim(m_scenario.isLink ? folder + "/victim" : m_decoy) {}

    /// Everything as it is before an attacked run: the item in the Trash, and the plan to put it back.
    void build() {
        fs::remove_all(m_folder);
        fs::create_directories(m_home + "/lib/cache/npm");
        writeFile(m_home + "/lib/cache/npm/content", "item");
        kestrune::LinuxTrash user;
        const auto moved = user.moveToTrash({m_home, "lib/cache/npm", {}});
        const auto planned = user.planPutBack(m_home, moved.ok() ? moved.value().location : std::string());
        if (!planned.ok()) {
            std::cerr << "nothing to put back: " << planned.error().message << '\n';
            std::exit(2);
        }
        m_plan = planned.value();
        m_record = inodeOf(m_home + "/" + trash + "/info/npm.trashinfo");
        makeVictim();
        m_decoyInode = inodeOf(m_decoy);
        m_placeInode = inodeOf(m_place);
    }

    /// One attacked run and the look at what it left.
    void run(Tally& tally) {
        const auto result = [&] {
            const Attacker attacker(m_place, m_decoy);
            return kestrune::LinuxTrash().putBack(m_home, m_plan);
        }();
        restoreNames();
        ++tally.runs;
        tally.back += result.ok() ? 1 : 0;
        tally.halfWay += !result.ok() && saysHalfWay(result.error()) ? 1 : 0;
        tally.recordsLeft += result.ok() && !pathOf(m_record).empty() ? 1 : 0;
        const std::string wrong =
            (result.ok() ? judgeSuccess(result.value()) : judgeFailure(result.error())) + judgeVictim();
        if (!wrong.empty()) {
            ++tally.wrong;
            std::cout << "WRONG (" << m_scenario.name << "): " << wrong << " reported "
                      << (result.ok() ? result.value() : result.error().message) << '\n';
        }
    }

private:
    [[nodiscard]] bool exchangesRecord() const { return m_scenario.place.ends_with(".trashinfo"); }

    /// Something that looks like what it takes the place of, with content of its own everywhere.
    void makeVictim() const {
        if (exchangesRecord()) {
            writeFile(m_victim, recordOfVictim());
        } else {
            for (const char* inside : {"", "/npm", "/cache", "/cache/npm", "/files", "/files/npm", "/Trash"}) {
                // Where the item would arrive nothing may be, or it would never be moved there.
                const bool isPlace = (m_scenario.place == "lib/cache" && inside == std::string("/npm")) ||
                                     (m_scenario.place == "lib" && inside == std::string("/cache/npm"));
                if (!isPlace) {
                    fs::create_directories(m_victim + inside);
                    writeFile(m_victim + inside + "/content", "victim");
                }
            }
            fs::create_directories(m_victim + "/info");
            writeFile(m_victim + "/info/npm.trashinfo", recordOfVictim());
            writeFile(m_victim + "/npm.trashinfo", recordOfVictim());
        }
        if (m_scenario.isLink) {
            fs::create_symlink(m_victim, m_decoy);
            if (::lchown(m_decoy.c_str(), m_scenario.linkOwner, m_scenario.linkOwner) != 0) {
                std::perror("lchown");
                std::exit(2);
            }
        }
    }

    [[nodiscard]] std::string recordOfVictim() const {
        return "[Trash Info]\nPath=" + kestrune::percentEncoded(m_home + "/lib/cache/victim") + "\n";
    }

    /// Gives the exchanged names back to those that had them.
    void restoreNames() const {
        if (inodeOf(m_place) == m_decoyInode) {
            ::renameat2(AT_FDCWD, m_place.c_str(), AT_FDCWD, m_decoy.c_str(),
                        inodeOf(m_decoy) != 0 ? RENAME_EXCHANGE : RENAME_NOREPLACE);
        } else if (m_placeInode != 0 && inodeOf(m_decoy) == m_placeInode) {
            ::renameat2(AT_FDCWD, m_decoy.c_str(), AT_FDCWD, m_place.c_str(), RENAME_NOREPLACE);
        }
    }

    static bool saysHalfWay(const kestrune::PutBackError& error) {
        return error.message.starts_with("This move couldn't be confirmed or undone.");
    }

    /// Where in the arena this inode lies; empty when nowhere.
    [[nodiscard]] std::string pathOf(ino_t inode) const {
        for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
            if (inodeOf(entry.path().string()) == inode) {
                return entry.path().string();
            }
        }
        return {};
    }

    [[nodiscard]] std::string itemPath() const { return pathOf(m_plan.item.inode); }

    [[nodiscard]] std::string judgeSuccess(const std::string& reported) const {
        const std::string path = itemPath();
        // A folder that is exchanged for another folder goes on being exchanged after a true report.
        const bool exchanged =
            !m_scenario.isLink && reported.starts_with(m_place) && path == m_decoy + reported.substr(m_place.size());
        if (reported != m_plan.originalPath || (path != reported && !exchanged)) {
            return "the item is not where it was said to be: " + path + ";";
        }
        if (contentOf(path + "/content") != "item") {
            return "the content changed;";
        }
        return exchangesRecord() || pathOf(m_record).empty() ? "" : "the record stayed;";
    }

    [[nodiscard]] std::string judgeFailure(const kestrune::PutBackError& error) const {
        const std::string path = itemPath();
        if (path.empty() || contentOf(path + "/content") != "item") {
            return "the item is gone;";
        }
        if (pathOf(m_record) != m_home + "/" + trash + "/info/npm.trashinfo") {
            return "the record left its place in a failed move;";
        }
        return saysHalfWay(error) || path == m_plan.location ? "" : "a failed move left the item at " + path + ";";
    }

    [[nodiscard]] std::string judgeVictim() const {
        if (inodeOf(m_decoy) != m_decoyInode) {
            return "the decoy moved to " + pathOf(m_decoyInode) + ";";
        }
        const std::vector<std::string> records =
            exchangesRecord() ? std::vector<std::string>{m_victim}
                              : std::vector<std::string>{m_victim + "/info/npm.trashinfo", m_victim + "/npm.trashinfo"};
        for (const std::string& record : records) {
            if (contentOf(record) != recordOfVictim()) {
                return "the victim's record is gone;";
            }
        }
        int contents = 0;
        if (!exchangesRecord()) {
            for (const auto& entry : fs::recursive_directory_iterator(m_victim)) {
                contents += entry.path().filename() == "content" && contentOf(entry.path()) == "victim" ? 1 : 0;
            }
        }
        const bool hasFreePlace = m_scenario.place == "lib" || m_scenario.place == "lib/cache";
        if (contents != (exchangesRecord() ? 0 : hasFreePlace ? 6 : 7)) {
            return "the victim changed;";
        }
        for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
            if (entry.path().filename().string().starts_with(".kestrune")) {
                return "a temporary name stayed;";
            }
        }
        return "";
    }

    const std::string m_folder;
    const Scenario m_scenario;
    const std::string m_home;
    const std::string m_place;
    const std::string m_decoy;
    const std::string m_victim;
    kestrune::PutBackPlan m_plan;
    ino_t m_record = 0;
    ino_t m_decoyInode = 0;
    ino_t m_placeInode = 0;
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 3 || ::geteuid() != 0) {
        std::cerr << "usage, as root: PutBackAttack WORKFOLDER RUNS\n";
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
        std::cout << scenario.name << ": " << tally.runs << " runs, " << tally.back << " put back ("
                  << tally.recordsLeft << " records left), " << tally.runs - tally.back << " refused (" << tally.halfWay
                  << " half way), " << tally.wrong << " wrong\n";
        total.runs += tally.runs;
        total.wrong += tally.wrong;
        total.back += tally.back;
    }
    fs::remove_all(folder);
    std::cout << "attacked runs: " << total.runs << ", put back: " << total.back << ", wrong: " << total.wrong << '\n';
    return total.wrong == 0 && total.runs >= runs && total.back > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
