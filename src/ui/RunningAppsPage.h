#pragma once

#include "ui/Page.h"

namespace kestrune {

class EmptyState;
class LiveRow;
class LiveRowList;
class ProtectedStrip;
class TextLabel;

/// What runs, how much memory and processor time each process takes, and the ways to protect it or to end it.
class RunningAppsPage final : public Page {
    Q_OBJECT

public:
    explicit RunningAppsPage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;

private:
    [[nodiscard]] LiveRow* makeRow(QWidget* list);

    /// What stands above the list, and would move its rows: while the user is at them it stays as it is.
    void refreshAbove();

    TextLabel* m_frontmost;
    ProtectedStrip* m_protected;
    LiveRowList* m_list;
    EmptyState* m_empty;
};

}  // namespace kestrune
