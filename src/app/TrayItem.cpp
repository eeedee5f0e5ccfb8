#include "app/TrayItem.h"

#include <QGuiApplication>

#include <utility>

namespace kestrune {

namespace {

TrayTexts trayTexts(const StatusMenuModel& model) {
    return {.title = QString::fromStdString(model.title()),
            .tooltip = QString::fromStdString(model.tooltip()),
            .label = QString::number(model.state().memoryPercent) + QLatin1Char('%'),
            .percent = model.state().memoryPercent,
            .updateAvailable = model.state().updateAvailable};
}

/// Elsewhere than on X11 a program cannot place a popup of its own: the panel shows the exported menu.
bool panelShowsMenu() {
    return QGuiApplication::platformName() != QLatin1String("xcb");
}

}  // namespace

TrayItem::TrayItem(const QDBusConnection& connection, Handlers handlers)
    : m_handlers(std::move(handlers)),
      m_popup(m_handlers.perform),
      m_menu(connection, m_model.items(), {m_handlers.perform, m_handlers.menuWillOpen}),
      m_item(connection, DBusMenu::path, panelShowsMenu(),
             {[this] { activate(); }, [this] { m_handlers.perform(MenuAction::openOverview); }}),
      m_registration(connection, m_handlers.unavailable) {
}

void TrayItem::start() {
    m_registration.start();
}

void TrayItem::update(const StatusMenuModel& model) {
    if (m_model == model) {
        return;
    }
    m_model = model;
    m_menu.setItems(model.items());
    m_item.setTexts(trayTexts(model));
    m_popup.update(model.items());
}

void TrayItem::activate() {
    m_handlers.menuWillOpen();
    m_popup.toggle(m_model.items());
}

}  // namespace kestrune
