#include "ui/StoragePage.h"

#include <QApplication>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "base/ByteCount.h"
#include "ui/Button.h"
#include "ui/EmptyState.h"
#include "ui/LoadingRows.h"
#include "ui/NoteStrips.h"
#include "ui/ProgressStrip.h"
#include "ui/RowList.h"
#include "ui/StorageControls.h"
#include "ui/StorageFooter.h"
#include "ui/StorageRow.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"
#include "workspace/StorageListing.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

// Where the keyboard focus is in a list: which row, and which of its stops.
struct FocusPlace {
    std::size_t row = 0;
    qsizetype stop = 0;
    bool isIn = false;
};

FocusPlace focusPlace(const RowList& list) {
    const QWidget* focused = QApplication::focusWidget();
    for (std::size_t row = 0; focused != nullptr && row < list.rows().size(); ++row) {
        const QList<QWidget*> stops = list.rows()[row]->focusStops();
        const qsizetype stop = stops.indexOf(const_cast<QWidget*>(focused));
        if (stop >= 0) {
            return {row, stop, true};
        }
    }
    return {};
}

}  // namespace

StoragePage::StoragePage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::storage, parent),
      m_progress(new ProgressStrip(this)),
      m_notes(new NoteStrips(body())),
      m_controls(new StorageControls(body())),
      m_list(new RowList(translated("Cleanup locations"), body())),
      m_loading(new LoadingRows(body())),
      m_empty(new EmptyState(body())),
      m_footer(new StorageFooter(this)) {
    m_progress->hide();
    strips().addWidget(m_progress);
    content().addWidget(m_notes);
    content().addWidget(TextLabel::paragraph(
        Colour::text2,
        translated("Choose what goes. Model folders and logs need a closer look; back up custom models first. Your "
                   "projects, archives and Docker disk are kept out of this cleanup."),
        body()));
    content().addSpacing(16);
    content().addWidget(m_controls);
    content().addSpacing(12);
    content().addWidget(m_list);
    content().addWidget(m_loading);
    content().addWidget(m_empty);
    content().addStretch(1);
    setFooter(m_footer);
    connectControls();
    watch(store.targets);
    watch(store.selection);
    watch(store.excluded);
    watch(store.failures);
    watch(store.scanNotes);
    watch(store.progress);
    watch(store.operationProgress);
    watch(store.lastScan);
    watch(store.message);
}

void StoragePage::connectControls() {
    connect(m_controls, &StorageControls::filterChanged, this, [this] { refresh(); });
    connect(m_controls, &StorageControls::selectWanted, this, [this] { store().selectRecommended(); });
    connect(m_controls, &StorageControls::clearWanted, this, [this] { store().clearSelection(); });
    connect(m_controls, &StorageControls::saveWanted, this, [this] { store().saveSelection(); });
    connect(m_controls, &StorageControls::restoreWanted, this, [this] { store().useSavedFolders(); });
    connect(m_footer, &StorageFooter::cleanWanted, this, [this] { store().clean(); });
    connect(m_footer, &StorageFooter::stopWanted, this, [this] { store().cancelCleanup(); });
    connect(m_empty->button(), &Button::clicked, this, [this] { store().scan(); });
    m_empty->button()->setLabel(translated("Scan supported locations"));
    m_empty->button()->setAccessibleName(translated("Scan supported locations"));
}

void StoragePage::arrange(int margin, bool narrow) {
    Page::arrange(margin, narrow);
    m_controls->setNarrow(narrow);
    m_footer->setSideMargin(margin);
}

void StoragePage::refresh() {
    refreshProgress();
    m_notes->setNotes(store().scanNotes.get());
    refreshControls();
    refreshRows();
    refreshFooter();
    chainFocus();
}

void StoragePage::refreshProgress() {
    const bool scanning = store().isScanning.get();
    const bool cleaning = store().isCleaning.get();
    const OperationProgress& progress = store().operationProgress.get();
    if (scanning) {
        m_progress->setCounted(true);
        m_progress->setProgress(translated("Scanning supported locations…"), progress.done, progress.total);
    } else if (cleaning) {
        m_progress->setCounted(false);
        m_progress->setProgress(shown(store().progress.get()), progress.done, progress.total);
    }
    m_progress->setVisible(scanning || cleaning);
    arrangeStrips();
}

void StoragePage::refreshControls() {
    const bool busy = store().isScanning.get() || store().isCleaning.get();
    const bool any = !store().targets.get().empty();
    StorageControlsState state;
    state.filter = any || !busy;
    state.selectBuildCaches = !busy && !store().recommended().empty();
    state.clearSelection = !busy && !store().selection.get().empty();
    state.save = state.clearSelection;
    state.restore = !busy && any;
    m_controls->setState(state);
}

StorageRow* StoragePage::rowFor(const CleanTarget& target) {
    StorageRow*& row = m_rows[target.id()];
    if (row == nullptr) {
        row = new StorageRow(target, m_list);
        const std::string& id = target.id();
        connect(row, &StorageRow::selectionWanted, this, [this, id](bool on) { store().setSelected(id, on); });
        connect(row, &StorageRow::revealWanted, this, [this, id] { store().reveal(id); });
        connect(row, &StorageRow::exclusionWanted, this, [this, row] { store().toggleExclusion(row->state().target); });
    }
    return row;
}

void StoragePage::refreshRows() {
    const auto& all = store().targets.get();
    const auto& excluded = store().excluded.get();
    const auto listed = storageRows(all, excluded, m_controls->filter());
    std::int64_t largest = 1;
    for (const CleanTarget& target : all) {
        largest = std::max(largest, target.sizeBytes);
    }
    const bool anyExcluded = std::any_of(listed.begin(), listed.end(),
                                         [&](const CleanTarget& target) { return excluded.count(target.path) > 0; });
    const QWidget* focused = QApplication::focusWidget();
    const FocusPlace focus = focusPlace(*m_list);
    std::vector<ListRow*> rows;
    std::set<std::string> kept;
    for (const CleanTarget& target : listed) {
        StorageRowState state;
        state.target = target;
        state.path = shown(abbreviatedPath(target.path, store().home()));
        const auto failure = store().failures.get().find(target.id());
        state.failure = failure == store().failures.get().end() ? QString() : shown(failure->second);
        state.selected = store().selection.get().count(target.id()) > 0;
        state.excluded = excluded.count(target.path) > 0;
        state.locked = store().isCleaning.get();
        state.share = static_cast<double>(target.sizeBytes) / static_cast<double>(largest);
        state.lastButtonWidth = StorageRow::lastButtonWidth(anyExcluded);
        StorageRow* row = rowFor(target);
        row->setState(state);
        rows.push_back(row);
        kept.insert(target.id());
    }
    for (auto entry = m_rows.begin(); entry != m_rows.end();) {
        if (kept.count(entry->first) == 0) {
            entry->second->hide();
            entry->second->deleteLater();
            entry = m_rows.erase(entry);
        } else {
            ++entry;
        }
    }
    m_list->setRows(rows);
    if (focus.isIn && QApplication::focusWidget() != focused && !rows.empty()) {
        const auto stops = rows[std::min(focus.row, rows.size() - 1)]->focusStops();
        stops.at(focus.stop)->setFocus(Qt::OtherFocusReason);
    }
    refreshEmpty(!rows.empty());
}

void StoragePage::refreshEmpty(bool anyRow) {
    const bool loading = store().isScanning.get() && store().targets.get().empty();
    const bool never = !store().lastScan.get() && store().targets.get().empty();
    if (never) {
        m_empty->setContent(QStringLiteral("magnifyingglass"), translated("Nothing scanned yet"),
                            translated("A scan measures the supported cache and model folders. It moves nothing; you "
                                       "choose what goes afterwards."));
    } else {
        m_empty->setContent(QStringLiteral("checkmark.circle"), translated("Nothing to review here"),
                            translated("Try another category or scan again. This scan covers supported locations, "
                                       "not your entire disk."));
    }
    m_empty->button()->setVisible(never);
    m_empty->button()->setEnabled(!store().isCleaning.get());
    m_list->setVisible(anyRow);
    m_loading->setVisible(loading);
    m_empty->setVisible(!anyRow && !loading);
}

void StoragePage::refreshFooter() {
    const std::size_t count = store().selected().size();
    m_footer->setSelection(count, shown(formatByteCount(store().selectedBytes())));
    m_footer->setAction(store().isCleaning.get(), count > 0 && !store().isScanning.get());
}

void StoragePage::chainFocus() {
    QWidget* last = m_list->chainFocus(m_controls->lastFocusStop());
    setTabOrder(last, m_empty->button());
    last = m_empty->button();
    const QList<QWidget*> stops = m_footer->focusStops();
    for (QWidget* stop : stops) {
        setTabOrder(last, stop);
        last = stop;
    }
}

}  // namespace kestrune
