#include "platform/linux/IconFiles.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Text.h"
#include "platform/linux/LinuxRegularFile.h"
#include "platform/linux/LinuxXdgFolders.h"

namespace kestrune {

namespace {

constexpr std::size_t longestIndex = 1U << 20U;
constexpr std::size_t mostThemes = 16;
constexpr std::size_t mostFolders = 2'000;
constexpr std::size_t mostNames = 4'096;
constexpr int wantedSize = 48;
constexpr std::array<std::string_view, 2> endings{".svg", ".png"};

// One "[48x48/apps]" of an index.theme.
struct ThemeFolder {
    std::string path;
    int size = 0;
    int scale = 1;
    bool isScalable = false;
};

struct ThemeIndex {
    std::vector<std::string> inherits;
    std::vector<ThemeFolder> folders;
};

bool isFolder(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isFile(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// A path below a folder that leads nowhere else.
bool staysBelow(const std::string& path) {
    const std::vector<std::string> pieces = split(path, '/');
    return !path.empty() && path.find('\0') == std::string::npos &&
           std::none_of(pieces.begin(), pieces.end(),
                        [](const std::string& piece) { return piece.empty() || piece == "." || piece == ".."; });
}

std::vector<std::string> listOf(std::string_view value) {
    std::vector<std::string> names = split(value, ',');
    std::erase_if(names, [](const std::string& name) { return !staysBelow(name); });
    return names;
}

int numberOf(std::string_view text) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

ThemeIndex parseIndex(std::string_view text) {
    ThemeIndex index;
    ThemeFolder* folder = nullptr;
    bool isHead = false;
    for (const std::string& line : split(text, '\n')) {
        const std::size_t equals = line.find('=');
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
            std::string group = line.substr(1, line.size() - 2);
            isHead = group == "Icon Theme";
            const bool isTaken = !isHead && staysBelow(group) && index.folders.size() < mostFolders;
            folder = isTaken ? &index.folders.emplace_back(ThemeFolder{std::move(group)}) : nullptr;
        } else if (equals != std::string::npos) {
            const std::string_view key = std::string_view(line).substr(0, equals);
            const std::string_view value = std::string_view(line).substr(equals + 1);
            if (isHead && key == "Inherits") {
                index.inherits = listOf(value);
            } else if (folder != nullptr && key == "Size") {
                folder->size = numberOf(value);
            } else if (folder != nullptr && key == "Scale") {
                folder->scale = numberOf(value);
            } else if (folder != nullptr && key == "Type") {
                folder->isScalable = value == "Scalable";
            }
        }
    }
    return index;
}

// The smaller, the better: pictures that scale, then those that need not be enlarged, then the nearest in size.
std::pair<int, int> awayFromWanted(const ThemeFolder& folder) {
    const int pixels = std::clamp(folder.size, 0, 4096) * std::clamp(folder.scale, 1, 8);
    if (folder.isScalable) {
        return {0, 0};
    }
    return pixels >= wantedSize ? std::pair{1, pixels - wantedSize} : std::pair{2, wantedSize - pixels};
}

std::string pictureIn(const std::string& folder, const std::string& name) {
    for (const std::string_view ending : endings) {
        std::string path = std::string(folder).append("/").append(name).append(ending);
        if (isFile(path)) {
            return path;
        }
    }
    return {};
}

bool isPictureName(std::string_view path) {
    return std::any_of(endings.begin(), endings.end(), [&](std::string_view ending) { return path.ends_with(ending); });
}

}  // namespace

IconFiles::IconFiles(std::vector<std::string> roots, ThemeNames themes, std::vector<std::string> looseFolders)
    : m_roots(std::move(roots)), m_themes(std::move(themes)), m_looseFolders(std::move(looseFolders)) {
}

IconFiles IconFiles::standard(const std::string& home, ThemeNames themes) {
    std::vector<std::string> roots{home + "/.icons"};
    std::vector<std::string> loose;
    for (const std::string& folder : LinuxXdgFolders::data(home)) {
        roots.push_back(folder + "/icons");
        loose.push_back(folder + "/pixmaps");
    }
    return {std::move(roots), std::move(themes), std::move(loose)};
}

const std::string& IconFiles::find(const std::string& icon) {
    const auto known = m_found.find(icon);
    if (known != m_found.end()) {
        return known->second;
    }
    if (m_found.size() >= mostNames) {
        m_found.clear();
    }
    return m_found.emplace(icon, lookUp(icon)).first->second;
}

void IconFiles::forget() {
    m_found.clear();
    m_folders.clear();
}

std::string IconFiles::lookUp(const std::string& icon) {
    if (!icon.empty() && icon.front() == '/') {
        const std::string path = standardizedPath(icon);
        return isPictureName(path) && isFile(path) ? path : std::string{};
    }
    // Some entries name a file, although they should hold the name alone.
    const std::string name = isPictureName(icon) ? icon.substr(0, icon.size() - endings.front().size()) : icon;
    if (!staysBelow(name) || name.find('/') != std::string::npos) {
        return {};
    }
    readThemes();
    for (const std::string& folder : m_folders) {
        if (std::string path = pictureIn(folder, name); !path.empty()) {
            return path;
        }
    }
    return {};
}

void IconFiles::readThemes() {
    if (!m_folders.empty()) {
        return;
    }
    std::vector<std::string> themes = m_themes();
    std::set<std::string> known;
    const auto readOnce = [&](const std::string& theme) {
        return known.size() < mostThemes && staysBelow(theme) && known.insert(theme).second
                   ? readTheme(theme)
                   : std::vector<std::string>{};
    };
    for (std::size_t i = 0; i < themes.size() && i < mostThemes; ++i) {
        if (themes[i] != "hicolor") {
            const std::vector<std::string> inherited = readOnce(themes[i]);
            themes.insert(themes.end(), inherited.begin(), inherited.end());
        }
    }
    static_cast<void>(readTheme("hicolor"));
    std::copy_if(m_looseFolders.begin(), m_looseFolders.end(), std::back_inserter(m_folders), isFolder);
}

std::vector<std::string> IconFiles::readTheme(const std::string& theme) {
    ThemeIndex index;
    std::vector<std::string> bases;
    for (const std::string& root : m_roots) {
        const std::string base = std::string(root).append("/").append(theme);
        if (!isFolder(base)) {
            continue;
        }
        bases.push_back(base);
        if (index.folders.empty()) {
            index = parseIndex(readRegularFile(base + "/index.theme", longestIndex).value_or(std::string{}));
        }
    }
    std::stable_sort(index.folders.begin(), index.folders.end(), [](const ThemeFolder& one, const ThemeFolder& other) {
        return awayFromWanted(one) < awayFromWanted(other);
    });
    for (const ThemeFolder& folder : index.folders) {
        for (const std::string& base : bases) {
            const std::string path = std::string(base).append("/").append(folder.path);
            if (m_folders.size() < mostFolders && isFolder(path)) {
                m_folders.push_back(path);
            }
        }
    }
    return index.inherits;
}

}  // namespace kestrune
