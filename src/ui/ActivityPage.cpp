#include "ui/ActivityPage.h"

#include <QSet>
#include <QVBoxLayout>
#include <set>

#include "ui/ActivityRow.h"
#include "ui/EmptyState.h"
#include "ui/LocalTime.h"
#include "ui/RowList.h"
#include "ui/ScrollArea.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"
#include "workspace/ActivityDays.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

// What tells an entry's buttons from those of others: its title, and for a title that came before also when it was.
QString nameInButtons(const QString& title, const QString& moment, QSet<QString>& taken) {
    QString name = title;
    if (taken.contains(name)) {
        name += QStringLiteral(", %1").arg(moment);
    }
    const QString base = name;
    for (int number = 2; taken.contains(name); ++number) {
        name = QStringLiteral("%1, %2").arg(base).arg(number);
    }
    taken.insert(name);
    return name;
}

}  // namespace

ActivityPage::ActivityPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::activity, parent), m_dayLayout(new QVBoxLayout), m_empty(new EmptyState(body())) {
    auto* intro = new TextLabel(FontRole::body, Colour::text2, body());
    intro->setText(
        translated("Your last 100 actions are saved on this Mac. Moving files to Trash doesn't free space "
                   "until you empty Trash in Finder."));
    intro->setFit(TextLabel::Fit::wrap);
    m_empty->setContent(QStringLiteral("clock"), translated("A clean slate"),
                        translated("Your cleanup and app actions will appear here."));
    content().addWidget(intro);
    content().addLayout(m_dayLayout);
    content().addWidget(m_empty);
    content().addStretch(1);
    m_dayLayout->setSpacing(0);
    watch(store.history);
}

void ActivityPage::fitDays(std::size_t count) {
    while (m_days.size() > count) {
        m_days.back().title->deleteLater();
        m_days.back().list->deleteLater();
        m_days.back().title->hide();
        m_days.back().list->hide();
        m_days.pop_back();
    }
    while (m_days.size() < count) {
        Day day{new TextLabel(FontRole::dayTitle, Colour::text2, body()), new RowList(QString(), body())};
        auto* titleRow = new QVBoxLayout;
        titleRow->setContentsMargins(2, 16, 2, 6);
        titleRow->addWidget(day.title);
        m_dayLayout->addLayout(titleRow);
        m_dayLayout->addWidget(day.list);
        day.title->show();
        day.list->show();
        m_days.push_back(day);
    }
}

void ActivityPage::refresh() {
    const auto days = activityDays(store().history.get(), store().now(), localOffset);
    std::set<std::string> kept;
    QSet<QString> taken;
    std::vector<std::vector<ListRow*>> rowsOfDay;
    for (const ActivityDay& day : days) {
        const QString dayTitle = shown(day.title);
        std::vector<ListRow*>& rows = rowsOfDay.emplace_back();
        for (const ActivityEntry& entry : day.entries) {
            const QString time = shown(timeOfDayText(entry.date, localOffset));
            const QString name = entry.trashPath
                                     ? nameInButtons(shown(entry.title), dayTitle + QLatin1Char(' ') + time, taken)
                                     : QString();
            ActivityRow*& row = m_rows[entry.id];
            if (row == nullptr) {
                row = new ActivityRow(entry, dayTitle, time, name, body());
                connect(row, &ActivityRow::showInTrashWanted, this, [this, entry] { store().showInTrash(entry); });
                connect(row, &ActivityRow::putBackWanted, this, [this, entry] { store().putBack(entry); });
            } else {
                row->setNames(dayTitle, name);
            }
            kept.insert(entry.id);
            rows.push_back(row);
        }
    }
    for (auto known = m_rows.begin(); known != m_rows.end();) {
        if (kept.count(known->first) == 0) {
            known->second->hide();
            known->second->deleteLater();
            known = m_rows.erase(known);
        } else {
            ++known;
        }
    }
    const std::size_t before = m_days.size();
    fitDays(std::max(days.size(), before));
    QWidget* last = scrollArea();
    for (std::size_t index = 0; index < days.size(); ++index) {
        m_days[index].title->setText(shown(days[index].title));
        m_days[index].list->setAccessibleName(shown(days[index].title));
        m_days[index].list->setRows(rowsOfDay[index]);
        last = m_days[index].list->chainFocus(last);
    }
    for (std::size_t index = days.size(); index < m_days.size(); ++index) {
        m_days[index].list->setRows({});
    }
    fitDays(days.size());
    m_empty->setVisible(days.empty());
}

}  // namespace kestrune
