#pragma once

#include "app/StatusMenuModel.h"

namespace kestrune {

/// The program's place in the desktop's status area.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Shows model from now on. Costs nothing where nothing changed. Main thread.
    virtual void update(const StatusMenuModel& model) = 0;

    /// Whether the user can see and use the item now. Main thread.
    [[nodiscard]] virtual bool isShown() const = 0;
};

}  // namespace kestrune
