#include "platform/linux/LinuxStatusItem.h"

#include <QGuiApplication>

#include <utility>

#include "platform/linux/DBusMenu.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/TrayRegistration.h"

namespace kestrune {

namespace {

TrayTexts trayTexts(const StatusItemContent& content) {
    return {.title = QString::fromStdString(content.title),
            .tooltip = QString::fromStdString(content.tooltip),
            .label = QString::number(content.memoryPercent) + QLatin1Char('%'),
            .percent = content.memoryPercent,
            .updateAvailable = content.updateAvailable};
}

/// Elsewhere than on X11 a program cannot place a popup of its own: the panel shows the exported menu.
bool panelShowsMenu() {
    return QGuiApplication::platformName() != QLatin1String("xcb");
}

}  // namespace

struct LinuxStatusItem::OnBus {
    OnBus(const QDBusConnection& connection, const Handlers& handlers, const std::vector<MenuItem>& items)
        : menu(connection, items, {handlers.perform, handlers.menuWillOpen}),
          item(connection, DBusMenu::path, panelShowsMenu(),
               {handlers.toggleMenu, [perform = handlers.perform] { perform(MenuAction::openOverview); }}),
          registration(connection, handlers.unavailable) {}

    DBusMenu menu;
    StatusNotifierItem item;
    TrayRegistration registration;
};

LinuxStatusItem::LinuxStatusItem(QDBusConnection connection) : m_connection(std::move(connection)) {
}

LinuxStatusItem::~LinuxStatusItem() = default;

void LinuxStatusItem::start(Handlers handlers) {
    m_handlers = std::move(handlers);
}

void LinuxStatusItem::update(const StatusItemContent& content) {
    if (m_onBus && m_content == content) {
        return;
    }
    m_content = content;
    if (m_onBus) {
        m_onBus->menu.setItems(content.menu);
        m_onBus->item.setTexts(trayTexts(content));
    } else {
        m_onBus = std::make_unique<OnBus>(m_connection, m_handlers, content.menu);
        m_onBus->item.setTexts(trayTexts(content));
        m_onBus->registration.start();
    }
}

bool LinuxStatusItem::isShown() const {
    return m_onBus && m_onBus->registration.isHosted();
}

}  // namespace kestrune
