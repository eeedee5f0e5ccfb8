#pragma once

#include <QMenu>
#include <QPointer>

#include <vector>

#include "app/StatusMenuModel.h"

namespace kestrune {

/// The status menu as a popup of our own, for panels that hand clicks to us: it shows tooltips and shortcuts, which
/// a menu drawn by the panel cannot. It exists only while it is open. Main thread.
class StatusMenuPopup final {
public:
    explicit StatusMenuPopup(MenuHandler perform);
    ~StatusMenuPopup();

    StatusMenuPopup(const StatusMenuPopup&) = delete;
    StatusMenuPopup& operator=(const StatusMenuPopup&) = delete;

    /// Opens the menu under the pointer, or closes it when it is open.
    void toggle(const std::vector<MenuItem>& items);

    /// Brings an open menu up to date. Lines neither appear nor vanish under the pointer.
    void update(const std::vector<MenuItem>& items);

private:
    MenuHandler m_perform;
    QPointer<QMenu> m_menu;
};

}  // namespace kestrune
