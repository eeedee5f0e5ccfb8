#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/Result.h"
#include "platform/Trash.h"
#include "storage/CleanTarget.h"
#include "storage/DevCleaners.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

/// A confirmed cleanup on its way. The main thread owns it but for outcome, which the job of the current item writes
/// before it posts itself back.
struct WorkspaceStore::Cleanup {
    struct Item {
        CleanTarget target;
        FileIdentity expected;  ///< the item that lay there when the user was asked
    };

    std::vector<Item> items;
    std::size_t handled = 0;  ///< index of the current item

    /// How the current item's move ended; nothing until it did, or when it was not begun.
    std::optional<Result<std::string, CleanError>> outcome;

    std::set<std::string> moved;                  ///< ids
    std::map<std::string, std::string> failures;  ///< why, by id
    bool stopped = false;
};

}  // namespace kestrune
