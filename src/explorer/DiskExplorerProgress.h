#pragma once

#include <string>

#include "explorer/DiskExplorerResult.h"

namespace kestrune {

/// How far a scan is: what it knows so far, in the order and with the cut of the result it will give.
struct DiskExplorerProgress {
    DiskExplorerResult found;
    std::string folder;  ///< absolute: one that is being read

    bool operator==(const DiskExplorerProgress&) const = default;
};

}  // namespace kestrune
