#pragma once

#include <memory>

#include "platform/StatusItem.h"

namespace kestrune {

/// The item in the menu bar, as text, with a menu of the system's own: handlers.toggleMenu and handlers.unavailable are
/// never needed.
///
/// The handlers run from the run loop, never inside the tracking of the menu, and may open a modal window. They do not
/// come through the main dispatch queue, which would stand still until such a window is closed.
class MacStatusItem final : public StatusItem {
public:
    MacStatusItem();
    ~MacStatusItem() override;

    void start(Handlers handlers) override;
    void update(const StatusItemContent& content) override;

    /// True from the first update on, also while a menu bar that is too full, or one that a full screen hides, does not
    /// draw the item: the system knows no sure sign of that, and the program is still found by opening it again.
    [[nodiscard]] bool isShown() const override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

}  // namespace kestrune
