#include "ui/OverviewPage.h"

#include <QVBoxLayout>

#include "base/ByteCount.h"
#include "ui/HeroPanel.h"
#include "ui/NavigationRow.h"
#include "ui/RowList.h"
#include "ui/TelemetryTiles.h"
#include "ui/TextLabel.h"
#include "ui/TileGrid.h"
#include "ui/UiText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int noteLine = 17;

}  // namespace

OverviewPage::OverviewPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::overview, parent),
      m_tiles(new TileGrid(body())),
      m_hero(new HeroPanel(body())),
      m_actions(new RowList(translated("Next steps"), body())) {
    auto* note = new TextLabel(FontRole::detail, Colour::text3, body());
    note->setText(
        translated("High memory usage alone doesn't mean your Mac needs cleaning. macOS uses available RAM for "
                   "useful work; pressure and responsiveness matter more."));
    note->setFit(TextLabel::Fit::wrap);
    note->setLineHeight(Metrics::px(noteLine));
    auto* noteRow = new QVBoxLayout;
    noteRow->setContentsMargins(2, 12, 2, 20);
    noteRow->addWidget(note);
    content().addWidget(m_tiles);
    content().addLayout(noteRow);
    content().addWidget(m_hero);
    content().addSpacing(16);
    content().addWidget(m_actions);
    content().addStretch(1);
    addActions();
    connect(m_hero, &HeroPanel::reviewWanted, this, [this] { this->store().page.set(WorkspacePage::storage); });
    watch(store.memoryPercent);
    watch(store.availableMemoryGB);
    watch(store.disk);
    watch(store.cpuPercent);
    watch(store.downloadRate);
    watch(store.uploadRate);
    watch(store.batteryReading);
    watch(store.telemetryHistory);
    watch(store.pressure);
    watch(store.targets);
    watch(store.excluded);
    watch(store.lastScan);
}

void OverviewPage::addActions() {
    const auto add = [this](const char* symbol, const QString& title, const QString& detail, WorkspacePage page) {
        auto* row = new NavigationRow(QLatin1String(symbol), title, detail, m_actions);
        connect(row, &NavigationRow::activated, this, [this, page] { store().page.set(page); });
        return row;
    };
    m_actions->setRows(
        {add("hammer.fill", translated("Review developer caches"), translated("Builds may rebuild these on next use."),
             WorkspacePage::storage),
         add("brain.head.profile", translated("Explore local AI models"),
             translated("Downloaded models take space. Back up custom ones before removing."), WorkspacePage::ai),
         add("lock.shield", translated("Protect the apps you rely on"),
             translated("Protection applies to every app-closing action."), WorkspacePage::apps)});
}

void OverviewPage::arrange(int margin, bool narrow) {
    Page::arrange(margin, narrow);
    m_tiles->setNarrow(narrow);
}

void OverviewPage::refresh() {
    m_tiles->setTiles(telemetryTiles(store()));
    refreshHero();
}

void OverviewPage::refreshHero() {
    if (!store().lastScan.get()) {
        m_hero->setSentence(store().isScanning.get() ? translated("Looking for caches…")
                                                     : translated("Not scanned yet"));
        return;
    }
    const QString size = shown(formatByteCount(store().recommendedBytes()));
    const qsizetype space = size.indexOf(QLatin1Char(' '));
    m_hero->setFigure(size.left(space), size.mid(space + 1));
}

}  // namespace kestrune
