#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "platform/FileQueries.h"

namespace kestrune {

/// Paths that exist because the test says so. A path that was given neither a kind nor a size is not there.
class FakeFileQueries final : public FileQueries {
public:
    void addDirectory(const std::string& path) { kinds[path] = FileKind::directory; }

    void addFile(const std::string& path, std::int64_t bytes = 0) {
        kinds[path] = FileKind::other;
        sizes[path] = bytes;
    }

    void remove(const std::string& path) {
        kinds.erase(path);
        sizes.erase(path);
    }

    [[nodiscard]] std::optional<FileKind> kind(const std::string& path) const override {
        const auto found = kinds.find(path);
        return found == kinds.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] std::optional<std::int64_t> fileSize(const std::string& path) const override {
        const auto found = sizes.find(path);
        return found == sizes.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] bool isReadable(const std::string& path) const override {
        return kinds.count(path) > 0 && unreadable.count(path) == 0;
    }

    /// The longest prefix of path that is a link is replaced by where it leads, until none is.
    [[nodiscard]] std::string resolvingLinks(const std::string& path) const override {
        std::string resolved = path;
        for (int hops = 0; hops < 40; ++hops) {
            const auto link = longestLink(resolved);
            if (link == links.end()) {
                break;
            }
            resolved.replace(0, link->first.size(), link->second);
        }
        return resolved;
    }

    std::map<std::string, FileKind> kinds;
    std::map<std::string, std::int64_t> sizes;
    std::set<std::string> unreadable;
    std::map<std::string, std::string> links;  ///< absolute path of a link and the absolute path it leads to

private:
    [[nodiscard]] std::map<std::string, std::string>::const_iterator longestLink(const std::string& path) const {
        auto longest = links.end();
        for (auto link = links.begin(); link != links.end(); ++link) {
            const std::string& name = link->first;
            const bool leads =
                path.compare(0, name.size(), name) == 0 && (path.size() == name.size() || path[name.size()] == '/');
            if (leads && (longest == links.end() || name.size() > longest->first.size())) {
                longest = link;
            }
        }
        return longest;
    }
};

}  // namespace kestrune
