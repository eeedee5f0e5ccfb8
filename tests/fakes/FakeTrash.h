#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/Trash.h"

namespace kestrune {

/// A Trash in memory. Every place holds an item of its own unless the test says that it is missing or replaced.
class FakeTrash final : public Trash {
public:
    [[nodiscard]] std::optional<FileIdentity> identity(const std::string& home,
                                                       const std::string& relativePath) override {
        ++identitiesTaken;
        return itemAt(home + "/" + relativePath);
    }

    [[nodiscard]] std::optional<bool> isEmpty(const std::string& /*home*/) override { return empty; }

    [[nodiscard]] Result<TrashedItem, TrashError> moveToTrash(const TrashRequest& request) override {
        const std::string path = request.home + "/" + request.relativePath;
        requests.push_back(request);
        if (whileMoving) {
            whileMoving(request);
        }
        if (const auto failure = failures.find(path); failure != failures.end()) {
            return failure->second;
        }
        const auto item = itemAt(path);
        if (!item) {
            return TrashError{TrashFailure::missing, {}};
        }
        if (request.expected && *request.expected != *item) {
            return TrashError{TrashFailure::protectedOrChanged, {}};
        }
        missing.insert(path);
        moved.push_back(path);
        return TrashedItem{tellsLocation ? location(path) : std::string{}};
    }

    [[nodiscard]] Result<PutBackPlan, PutBackError> planPutBack(const std::string& /*home*/,
                                                                const std::string& location) override {
        if (planFailure) {
            return *planFailure;
        }
        const auto plan = plans.find(location);
        return plan == plans.end() ? Result<PutBackPlan, PutBackError>(PutBackError{PutBackFailure::missing, {}, {}})
                                   : plan->second;
    }

    [[nodiscard]] Result<std::string, PutBackError> putBack(const std::string& /*home*/,
                                                            const PutBackPlan& plan) override {
        putBacks.push_back(plan);
        if (putBackFailure) {
            return *putBackFailure;
        }
        const auto current = plans.find(plan.location);
        if (current == plans.end()) {
            return PutBackError{PutBackFailure::missing, {}, {}};
        }
        if (current->second != plan) {
            return PutBackError{PutBackFailure::changed, {}, {}};
        }
        plans.erase(current);
        missing.erase(plan.originalPath);
        return plan.originalPath;
    }

    /// Where an item from path lies once it has moved.
    [[nodiscard]] static std::string location(const std::string& path) { return "/trash/" + lastPathComponent(path); }

    /// Puts another item in the place of the one at path.
    void replaceItem(const std::string& path) { ++m_generations[path]; }

    std::map<std::string, TrashError> failures;  ///< by absolute path: what a move answers
    std::set<std::string> missing;               ///< absolute paths where nothing is
    std::optional<bool> empty = true;            ///< what isEmpty answers
    bool tellsLocation = true;
    std::function<void(const TrashRequest&)> whileMoving;  ///< called inside moveToTrash, before it answers

    std::map<std::string, PutBackPlan> plans;    ///< by location: what can go back
    std::optional<PutBackError> planFailure;     ///< what planPutBack answers
    std::optional<PutBackError> putBackFailure;  ///< what putBack answers
    std::vector<PutBackPlan> putBacks;           ///< what putBack was asked, in order

    std::vector<TrashRequest> requests;
    std::vector<std::string> moved;  ///< absolute paths, in order
    int identitiesTaken = 0;

private:
    [[nodiscard]] std::optional<FileIdentity> itemAt(const std::string& path) {
        if (missing.contains(path)) {
            return std::nullopt;
        }
        const auto inode = m_inodes.try_emplace(path, m_inodes.size() + 1).first->second;
        return FileIdentity{1, inode, m_generations[path], 0};
    }

    std::map<std::string, std::uint64_t> m_inodes;
    std::map<std::string, std::int64_t> m_generations;
};

}  // namespace kestrune
