#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/DirectoryWalker.h"

namespace kestrune {

/// Answers what the test laid down for a folder; a folder without an answer cannot be listed. Asks `cancelled` once for
/// each of the answer's entries and stops where it answers true.
class FakeDirectoryWalker final : public DirectoryWalker {
public:
    /// A folder that can be listed and holds `bytes` in one file.
    void add(const std::string& folder, std::int64_t bytes, std::int64_t unreadable = 0) {
        sizes[folder] = TreeSize{true, bytes, 1, unreadable, false};
    }

    [[nodiscard]] TreeSize measure(const std::string& folder, const Cancelled& cancelled) override {
        const std::scoped_lock guard(m_lock);
        measured.push_back(folder);
        if (whileMeasuring) {
            whileMeasuring(folder);
        }
        const auto found = sizes.find(folder);
        if (found == sizes.end()) {
            return {};
        }
        TreeSize size = found->second;
        for (std::int64_t entry = 0; cancelled && entry < size.entries; ++entry) {
            if (cancelled()) {
                size.cancelled = true;
                size.entries = entry;
                size.allocatedBytes = size.allocatedBytes * entry / found->second.entries;
                break;
            }
        }
        return size;
    }

    std::map<std::string, TreeSize> sizes;
    std::vector<std::string> measured;                       ///< every folder asked for, in order
    std::function<void(const std::string&)> whileMeasuring;  ///< called inside measure, before `cancelled` is asked

private:
    std::mutex m_lock;
};

}  // namespace kestrune
