#include "ui/RunningAppsPage.h"

#include <QVBoxLayout>

#include "ui/EmptyState.h"
#include "ui/LiveRowList.h"
#include "ui/ProtectedStrip.h"
#include "ui/RunningAppRow.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int partGap = 16;

}  // namespace

RunningAppsPage::RunningAppsPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::apps, parent),
      m_frontmost(TextLabel::paragraph(
          Colour::text2,
          translated("This desktop doesn’t tell Kestrune which app is in front, so Keep My Current "
                     "App Open can’t find yours. Protect it here instead."),
          body())),
      m_protected(new ProtectedStrip(body())),
      m_list(new LiveRowList(store, translated("Running apps"),
                             {[this](QWidget* list) { return makeRow(list); }, &RunningAppRow::heightAt}, body())),
      m_empty(new EmptyState(body())) {
    content().setSpacing(partGap);
    content().addWidget(TextLabel::paragraph(
        Colour::text2,
        translated("See what’s using memory and CPU. Protect apps you need, then choose what to close. "
                   "Each row shows one process; helper processes may use more."),
        body()));
    content().addWidget(m_frontmost);
    content().addWidget(m_protected);
    content().addWidget(m_list);
    content().addWidget(m_empty);
    content().addStretch(1);
    connect(m_protected, &ProtectedStrip::removalWanted, this, [this](const std::string& name) {
        const std::string kept = name;  // the strip lets go of its own while the names change
        this->store().removeProtection(kept);
        refreshAbove();
    });
    connect(m_protected, &ProtectedStrip::focusLeft, m_list, &LiveRowList::takeFocus);
    connect(m_list, &LiveRowList::settled, this, &RunningAppsPage::refreshAbove);
    watch(store.running);
    watch(store.processesListed);
    watch(store.protectedApps);
}

LiveRow* RunningAppsPage::makeRow(QWidget* list) {
    auto* row = new RunningAppRow(list);
    connect(row, &RunningAppRow::protectionWanted, this, [this](const RunningItem& item) {
        store().toggleProtection(item);
        m_list->refreshRows();
    });
    connect(row, &RunningAppRow::quitWanted, this,
            [this](const RunningItem& item, bool force) { store().quitApp(item, force); });
    return row;
}

void RunningAppsPage::refreshAbove() {
    const auto& names = store().protectedApps.get();
    m_protected->setNames(names);
    m_protected->setVisible(!names.empty());
    m_frontmost->setVisible(!store().tellsFrontmost());
}

void RunningAppsPage::refresh() {
    m_list->setItems(store().running.get());
    if (!m_list->isHeld()) {
        refreshAbove();
    }
    m_list->setVisible(!m_list->isEmpty());
    m_empty->setVisible(m_list->isEmpty());
    if (store().processesListed.get()) {
        m_empty->setContent(QStringLiteral("rectangle.stack"), translated("No apps to show"), QString());
    } else {
        m_empty->setContent(QStringLiteral("rectangle.stack"), QString(),
                            translated("Refresh to inspect your running applications."));
    }
}

}  // namespace kestrune
