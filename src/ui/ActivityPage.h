#pragma once

#include <map>
#include <string>
#include <vector>

#include "ui/Page.h"

namespace kestrune {

class ActivityRow;
class EmptyState;
class RowList;
class TextLabel;

/// The activity log, newest first, by day.
class ActivityPage final : public Page {
    Q_OBJECT

public:
    explicit ActivityPage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;

private:
    struct Day {
        TextLabel* title;
        RowList* list;
    };

    void fitDays(std::size_t count);

    QVBoxLayout* m_dayLayout;
    EmptyState* m_empty;
    std::vector<Day> m_days;
    std::map<std::string, ActivityRow*> m_rows;  // by entry id
};

}  // namespace kestrune
