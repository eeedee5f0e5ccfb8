#pragma once

#include "app/StatusMenuPopup.h"
#include "platform/StatusItem.h"

namespace kestrune {

/// A status item together with the menu that the program opens itself, on desktops that hand clicks to it. Main thread.
class StatusItemWithPopup final : public StatusItem {
public:
    /// item outlives this.
    explicit StatusItemWithPopup(StatusItem& item) : m_item(item) {}

    /// handlers.toggleMenu is this object's own.
    void start(Handlers handlers) override;

    void update(const StatusItemContent& content) override;

    [[nodiscard]] bool isShown() const override { return m_item.isShown(); }

private:
    void toggleMenu();

    StatusItem& m_item;
    Handlers m_handlers;
    StatusItemContent m_content;
    StatusMenuPopup m_popup{[this](MenuAction action) { m_handlers.perform(action); }};
};

}  // namespace kestrune
