#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Answers what the test laid down for a folder; a folder without an answer does not exist. Asks `cancelled` and
/// `timeIsUp` once for each of the answer's entries and stops where one answers true. Limits on what is named are the
/// test's own affair.
class FakeDirectoryWalker final : public DirectoryWalker {
public:
    /// A folder that can be listed and holds `bytes` in one file.
    void add(const std::string& folder, std::int64_t bytes, std::int64_t unreadable = 0) {
        TreeWalk& walk = walks[folder];
        walk = {};
        walk.exists = walk.opened = true;
        walk.entries = walk.files = 1;
        walk.bytes = bytes;
        walk.unreadable = unreadable;
    }

    [[nodiscard]] TreeWalk walk(const WalkRequest& request) override {
        const std::scoped_lock guard(m_lock);
        measured.push_back(request.folder);
        requests.push_back(request);
        if (whileMeasuring) {
            whileMeasuring(request.folder);
        }
        if (request.progress) {
            for (const auto& step : steps) {
                request.progress(step);
            }
        }
        const auto found = walks.find(request.folder);
        return found == walks.end() ? TreeWalk{} : cut(found->second, request);
    }

    std::map<std::string, TreeWalk> walks;
    std::vector<WalkProgress> steps;                         ///< told during every walk
    std::vector<std::string> measured;                       ///< every folder asked for, in order
    std::vector<WalkRequest> requests;                       ///< what was asked for it
    std::function<void(const std::string&)> whileMeasuring;  ///< called inside walk, before anything is asked or told

private:
    static TreeWalk cut(TreeWalk walk, const WalkRequest& request) {
        const TreeWalk whole = walk;
        for (std::int64_t entry = 0; entry < whole.entries; ++entry) {
            const bool cancelled = request.cancelled && request.cancelled();
            if (cancelled || (request.timeIsUp && request.timeIsUp())) {
                walk.end = cancelled ? WalkEnd::cancelled : WalkEnd::timeLimit;
                walk.entries = entry;
                walk.bytes = whole.bytes * entry / whole.entries;
                break;
            }
        }
        return walk;
    }

    std::mutex m_lock;
};

}  // namespace kestrune
