#pragma once

#include "ui/Page.h"

namespace kestrune {

class Button;
class NavigationRow;
class RowList;
class SettingRow;
class VersionLine;

/// Updates, preferences, the advanced memory action and the way to the help.
class SettingsPage final : public Page {
    Q_OBJECT

public:
    explicit SettingsPage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;
    bool event(QEvent* event) override;

private:
    void addUpdates();
    void addPreferences();
    void addMemoryAction();
    void addHelp();
    void refreshUpdates();
    void refreshMemoryAction();

    VersionLine* m_version;
    Button* m_check;
    Button* m_news;
    Button* m_updateHelp;
    SettingRow* m_login;
    SettingRow* m_motion;
    SettingRow* m_notifications;
    Button* m_purge;
    bool m_purgeHadFocus = false;
    NavigationRow* m_help;
};

}  // namespace kestrune
