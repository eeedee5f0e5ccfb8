#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kestrune {

/// Finds the picture an icon name stands for, by the Icon Theme Specification: in the given themes, what they inherit
/// and "hicolor", then in the folders of loose pictures. Only PNG and SVG files count; of several, one that scales
/// comes first, then the one nearest to 48 pixels. What was found is kept. One thread at a time.
class IconFiles final {
public:
    /// Tells the themes, the best first. Asked when the first icon is looked for, and again after forget().
    using ThemeNames = std::function<std::vector<std::string>()>;

    /// roots hold one folder a theme, the user's own first; looseFolders hold pictures themselves.
    IconFiles(std::vector<std::string> roots, ThemeNames themes, std::vector<std::string> looseFolders);

    /// The standard folders for a home folder.
    [[nodiscard]] static IconFiles standard(const std::string& home, ThemeNames themes);

    /// Absolute path of the picture; empty when there is none. icon is a name, perhaps with the ending of a picture
    /// file, or an absolute path.
    [[nodiscard]] const std::string& find(const std::string& icon);

    /// Looks everything up anew from now on.
    void forget();

private:
    void readThemes();
    [[nodiscard]] std::vector<std::string> readTheme(const std::string& theme);
    [[nodiscard]] std::string lookUp(const std::string& icon);

    std::vector<std::string> m_roots;
    ThemeNames m_themes;
    std::vector<std::string> m_looseFolders;
    std::vector<std::string> m_folders;  ///< that exist, in the order to look; empty until the first look
    std::map<std::string, std::string> m_found;
};

}  // namespace kestrune
