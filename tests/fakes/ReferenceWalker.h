#pragma once

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Walks the plain way, to compare with: one full path at a time, by recursion, remembering everything and sorting at
/// the end. Knows neither time nor progress; tells file systems apart by their device.
class ReferenceWalker final : public DirectoryWalker {
public:
    [[nodiscard]] TreeWalk walk(const WalkRequest& request) override {
        Run run{request, {}, {}, {}, 0};

        struct stat status {};

        if (::stat(request.folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
            return {};
        }
        run.found.exists = true;
        run.device = status.st_dev;
        run.found.opened = list(run, "");
        if (!run.found.opened) {
            run.found = {};
            run.found.exists = true;
            return run.found;
        }
        name(run);
        return run.found;
    }

private:
    struct Run {
        const WalkRequest& request;
        TreeWalk found;
        std::map<std::string, WalkedItem> children;
        std::vector<WalkedItem> files;
        dev_t device = 0;
    };

    static bool list(Run& run, const std::string& below) {
        const std::string folder = below.empty() ? run.request.folder : run.request.folder + "/" + below;
        const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), ::closedir);
        if (!listing) {
            ++run.found.unreadable;
            return false;
        }
        while (const dirent* entry = ::readdir(listing.get())) {
            const std::string name = entry->d_name;
            if (name == "." || name == "..") {
                continue;
            }
            if (run.found.end != WalkEnd::finished || isOver(run)) {
                break;
            }
            ++run.found.entries;
            look(run, below.empty() ? name : below + "/" + name, entry->d_type);
        }
        return true;
    }

    static bool isOver(Run& run) {
        if (run.request.cancelled && run.request.cancelled()) {
            run.found.end = WalkEnd::cancelled;
        } else if (run.request.entryLimit >= 0 && run.found.entries >= run.request.entryLimit) {
            run.found.end = WalkEnd::entryLimit;
        }
        return run.found.end != WalkEnd::finished;
    }

    static void look(Run& run, const std::string& below, unsigned char type) {
        struct stat status {};

        if (type == DT_FIFO || type == DT_SOCK) {
            return;
        }
        if (type == DT_LNK) {
            ++run.found.links;
        } else if (::lstat((run.request.folder + "/" + below).c_str(), &status) != 0) {
            ++run.found.unreadable;
        } else if (S_ISLNK(status.st_mode)) {
            ++run.found.links;
        } else if (S_ISDIR(status.st_mode)) {
            if (status.st_dev == run.device) {
                list(run, below);
            } else {
                ++run.found.elsewhere;
            }
        } else if (S_ISREG(status.st_mode)) {
            const std::int64_t bytes = status.st_blocks * 512;
            const std::string child = below.substr(0, below.find('/'));
            ++run.found.files;
            run.found.bytes += bytes;
            run.files.push_back({below, bytes, false});
            WalkedItem& item = run.children[child];
            item = {child, item.bytes + bytes, child != below};
        }
    }

    static bool isBefore(const WalkedItem& one, const WalkedItem& other) {
        return std::tie(other.bytes, one.path) < std::tie(one.bytes, other.path);
    }

    static void name(Run& run) {
        std::sort(run.files.begin(), run.files.end(), isBefore);
        run.files.resize(std::min(run.files.size(), static_cast<std::size_t>(run.request.largestLimit)));
        run.found.largestFiles = run.files;
        for (const auto& [path, item] : run.children) {
            run.found.children.push_back(item);
        }
        std::vector<WalkedItem>& named = run.found.children;
        std::sort(named.begin(), named.end(), isBefore);
        while (run.request.childLimit >= 0 && named.size() > static_cast<std::size_t>(run.request.childLimit)) {
            ++run.found.otherChildren;
            run.found.otherBytes += named.back().bytes;
            named.pop_back();
        }
    }
};

}  // namespace kestrune
