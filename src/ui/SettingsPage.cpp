#include "ui/SettingsPage.h"

#include <QEvent>
#include <QVBoxLayout>

#include "ui/Button.h"
#include "ui/FlowRow.h"
#include "ui/NavigationRow.h"
#include "ui/Panel.h"
#include "ui/RowList.h"
#include "ui/SettingRow.h"
#include "ui/UiText.h"
#include "ui/VersionLine.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int panelGap = 16;
constexpr int lineGap = 4;
constexpr int linkGap = 18;
constexpr int aroundLinks = 8;
constexpr int aboveButton = 12;

Button* link(const QString& label, QWidget* parent) {
    auto* button = new Button(Button::Kind::link, label, parent);
    button->setTrailingSymbol(QStringLiteral("arrow.up.right"));
    return button;
}

}  // namespace

SettingsPage::SettingsPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::settings, parent),
      m_version(new VersionLine(QStringLiteral("Kestrune " KESTRUNE_VERSION), body())),
      m_check(new Button(Button::Kind::secondary, translated("Check for updates…"), body())),
      m_news(link(translated("What's new"), body())),
      m_updateHelp(link(translated("Download & update help"), body())),
      m_login(new SettingRow(translated("Start at login"), body())),
      m_motion(new SettingRow(translated("Reduce animations"), body())),
      m_notifications(new SettingRow(translated("Enable macOS notifications"), body())),
      m_purge(new Button(Button::Kind::secondary, translated("Clear Cached Memory (Advanced)…"), body())),
      m_help(new NavigationRow(QStringLiteral("questionmark.circle"), translated("Kestrune help"), {}, body())) {
    addUpdates();
    addPreferences();
    addMemoryAction();
    addHelp();
    content().addStretch(1);
    watch(store.updateStatus);
    watch(store.launchesAtLogin);
    watch(store.reducedMotion);
    watch(store.notificationsAllowed);
    watch(store.isPurging);
}

void SettingsPage::addUpdates() {
    auto* panel = new Panel(QStringLiteral("arrow.down.circle"), translated("Updates"), body());
    auto* links = new FlowRow(linkGap, aroundLinks, panel);
    links->add(m_news);
    links->add(m_updateHelp);
    panel->addPiece(m_version, lineGap);
    panel->setAction(m_check);
    panel->addRow(links);
    content().addWidget(panel);
    content().addSpacing(panelGap);
    connect(m_check, &Button::clicked, this, [this] { store().checkUpdates(); });
    connect(m_news, &Button::clicked, this, [this] { store().openReleaseNotes(); });
    connect(m_updateHelp, &Button::clicked, this, [this] { store().openUpdateHelp(); });
}

void SettingsPage::addPreferences() {
    auto* panel = new Panel(QStringLiteral("slider.horizontal.3"), translated("Preferences"), body());
    m_notifications->setNote(
        translated("Update indicators stay visible in the menu even if notifications are disabled."));
    for (SettingRow* row : {m_login, m_motion, m_notifications}) {
        panel->addRow(row);
    }
    content().addWidget(panel);
    content().addSpacing(panelGap);
    // What was asked for may not have come about: the switch shows what the store says then.
    connect(m_login, &SettingRow::asked, this, [this] {
        store().toggleLaunchAtLogin();
        refresh();
    });
    connect(m_motion, &SettingRow::asked, this, [this](bool on) { store().setReducedMotion(on); });
    connect(m_notifications, &SettingRow::asked, this, [this] {
        store().enableNotifications();
        refresh();
    });
}

void SettingsPage::addMemoryAction() {
    auto* panel = new Panel(QStringLiteral("memorychip"), translated("Advanced memory action"), body());
    panel->addText(
        translated("macOS normally manages memory itself. Clearing inactive memory can require an administrator "
                   "password and may temporarily slow apps as caches refill. It is never part of a scheduled scan or "
                   "storage cleanup."));
    panel->addPiece(m_purge, aboveButton);
    content().addWidget(panel);
    content().addSpacing(panelGap);
    connect(m_purge, &Button::clicked, this, [this] { store().purgeMemoryWithReview(); });
}

void SettingsPage::addHelp() {
    auto* list = new RowList(translated("Help"), body());
    m_help->setLeadsOutside();
    list->setRows({m_help});
    content().addWidget(list);
    connect(m_help, &NavigationRow::activated, this, [this] { store().openHelp(); });
}

bool SettingsPage::event(QEvent* event) {
    // The user may come back from the system's own settings.
    if (event->type() == QEvent::WindowActivate && isVisible()) {
        store().refreshSettings();
    }
    return Page::event(event);
}

void SettingsPage::refresh() {
    refreshUpdates();
    m_login->setOn(store().launchesAtLogin.get());
    m_motion->setOn(store().reducedMotion.get());
    m_notifications->setOn(store().notificationsAllowed.get());
    refreshMemoryAction();
}

void SettingsPage::refreshUpdates() {
    m_version->setStatus(shown(store().updateStatus.get()));
    const bool canCheck = static_cast<bool>(store().checkUpdates);
    const QString why = canCheck ? QString() : translated("This copy of Kestrune does not look for updates itself.");
    m_check->setEnabled(canCheck);
    m_check->setToolTip(why);
    m_check->setAccessibleDescription(why);
}

void SettingsPage::refreshMemoryAction() {
    const bool purging = store().isPurging.get();
    if (purging != m_purge->isEnabled()) {
        return;
    }
    m_purge->setLabel(purging ? translated("Waiting for macOS…") : translated("Clear Cached Memory (Advanced)…"));
    if (purging) {
        m_purgeHadFocus = m_purge->hasFocus();
        m_purge->setEnabled(false);
    } else {
        m_purge->setEnabled(true);
        // Where the focus went by itself.
        if (m_purgeHadFocus && m_help->hasFocus()) {
            m_purge->setFocus(Qt::TabFocusReason);
        }
    }
}

}  // namespace kestrune
