#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

#include "app/DBusMenu.h"
#include "app/StatusItem.h"
#include "app/StatusMenuPopup.h"
#include "app/StatusNotifierItem.h"
#include "app/TrayRegistration.h"

namespace kestrune {

/// The status item of a Linux desktop: a StatusNotifierItem with its exported menu and our own popup. The program runs
/// on without a bus, without a panel and while either comes and goes. Main thread.
class TrayItem final : public StatusItem {
public:
    struct Handlers {
        MenuHandler perform;
        std::function<void()> menuWillOpen;
        std::function<void()> unavailable;  ///< there is no panel to show the item in
    };

    TrayItem(const QDBusConnection& connection, Handlers handlers);

    /// Shows the item as soon as there is something to show it in. After the first update.
    void start();

    void update(const StatusMenuModel& model) override;

    [[nodiscard]] bool isShown() const override { return m_registration.isHosted(); }

private:
    void activate();

    const Handlers m_handlers;
    StatusMenuModel m_model;
    StatusMenuPopup m_popup;
    DBusMenu m_menu;
    StatusNotifierItem m_item;
    TrayRegistration m_registration;
};

}  // namespace kestrune
