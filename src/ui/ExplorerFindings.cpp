#include "ui/ExplorerFindings.h"

#include <QApplication>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "base/ByteCount.h"
#include "ui/Breadcrumb.h"
#include "ui/Button.h"
#include "ui/Disclosure.h"
#include "ui/ExplorerList.h"
#include "ui/ExplorerMenu.h"
#include "ui/ExplorerProgressStrip.h"
#include "ui/ExplorerRowView.h"
#include "ui/Strip.h"
#include "ui/TextLabel.h"
#include "ui/TreemapView.h"
#include "ui/UiText.h"
#include "workspace/ExplorerTiles.h"
#include "workspace/ReadableText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int belowPath = 12;
constexpr int belowStrip = 16;
constexpr int sectionGap = 20;
constexpr int belowHeading = 8;
constexpr int aboveNote = 18;
constexpr int noteLine = 17;

TextLabel* note(const QString& text, QWidget* parent) {
    auto* label = new TextLabel(FontRole::detail, Colour::text3, parent);
    label->setText(text);
    label->setFit(TextLabel::Fit::wrap);
    label->setLineHeight(Metrics::px(noteLine));
    return label;
}

TextLabel* sentence(const QString& text, QWidget* parent) {
    return TextLabel::paragraph(Colour::text1, text, parent);
}

void setGap(QSpacerItem& gap, int height) {
    gap.changeSize(0, height, QSizePolicy::Minimum, QSizePolicy::Fixed);
}

}  // namespace

ExplorerFindings::ExplorerFindings(WorkspaceStore& store, QWidget* parent)
    : QWidget(parent),
      m_store(store),
      m_path(new Breadcrumb(this)),
      m_progress(new ExplorerProgressStrip(this)),
      m_incomplete(new Strip(this)),
      m_outcome(new Painted(this)),
      m_picture(new TreemapView(this)),
      m_folders(new ExplorerList(translated("Largest entries"), this)),
      m_noFolders(sentence(translated("No files or folders we can read here."), this)),
      m_cut(note(translated("Showing the 200 largest entries. Explore a folder to see more detail."), this)),
      m_files(new ExplorerList(translated("Biggest files"), this)),
      m_noFiles(sentence(translated("No files we can read here."), this)),
      m_method(new Disclosure(translated("How this scan works"),
                              translated("We include hidden files, skip linked folders and other mounted drives, "
                                         "and stop after 250,000 entries or about 45 seconds. macOS can share "
                                         "storage between files, so totals are estimates. Choose a smaller folder "
                                         "when a scan is incomplete."),
                              this)),
      m_belowStrip(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed)),
      m_belowPicture(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed)),
      m_aboveFiles(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed)) {
    build();
    connectPath();
    connectPicture();
    connectList(*m_folders);
    connectList(*m_files);
    // A row that came into view at once would move the picture away under a double click.
    m_rowWantedSoon.setSingleShot(true);
    m_rowWantedSoon.setInterval(QApplication::doubleClickInterval());
    connect(&m_rowWantedSoon, &QTimer::timeout, this, &ExplorerFindings::bringRow);
}

void ExplorerFindings::build() {
    m_outcome->setFixedSize(0, 0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_path);
    layout->addSpacing(belowPath);
    layout->addWidget(m_progress);
    layout->addWidget(m_incomplete);
    layout->addItem(m_belowStrip);
    layout->addWidget(m_outcome);
    layout->addWidget(m_picture);
    layout->addItem(m_belowPicture);
    addHeading(*layout, translated("Where the space goes"));
    layout->addWidget(m_folders);
    layout->addWidget(m_noFolders);
    m_cut->setContentsMargins(0, belowHeading, 0, 0);
    layout->addWidget(m_cut);
    layout->addItem(m_aboveFiles);
    m_filesHeading = addHeading(*layout, translated("Your biggest files · top 50"));
    layout->addWidget(m_files);
    layout->addWidget(m_noFiles);
    layout->addSpacing(aboveNote);
    layout->addWidget(note(translated("A size shows what we found, not how much space you’ll recover. Disk "
                                      "Explorer only looks; it never deletes files."),
                           this));
    layout->addSpacing(4);
    layout->addWidget(m_method);
}

TextLabel* ExplorerFindings::addHeading(QVBoxLayout& layout, const QString& title) {
    auto* heading = new TextLabel(FontRole::heading, Colour::text1, this);
    heading->setText(title);
    layout.addWidget(heading);
    layout.addSpacing(belowHeading);
    return heading;
}

void ExplorerFindings::connectPath() {
    connect(m_path, &Breadcrumb::chosen, this, [this](const std::string& path) { m_store.explore(path); });
    connect(m_path, &Breadcrumb::upWanted, this, [this] { m_store.exploreParent(); });
    connect(m_path, &Breadcrumb::backWanted, this, [this] { m_store.goBackInExplorer(); });
    connect(m_path, &Breadcrumb::forwardWanted, this, [this] { m_store.goForwardInExplorer(); });
    connect(stopButton(), &Button::clicked, this, [this] { m_store.stopExploring(); });
}

void ExplorerFindings::connectPicture() {
    connect(m_picture, &TreemapView::hovered, m_folders, &ExplorerList::setHighlighted);
    connect(m_picture, &TreemapView::explored, this, [this](const std::string& path) { m_store.explore(path); });
    connect(m_picture, &TreemapView::menuWanted, this, &ExplorerFindings::openMenu);
    connect(m_picture, &TreemapView::selected, this, [this](const std::string& path) {
        choose(path);
        m_rowWantedSoon.start();
    });
}

void ExplorerFindings::connectList(ExplorerList& list) {
    connect(&list, &ExplorerList::hovered, m_picture, &TreemapView::setHighlighted);
    connect(&list, &ExplorerList::selected, this, &ExplorerFindings::choose);
    connect(&list, &ExplorerList::explored, this, [this](const std::string& path) { m_store.explore(path); });
    connect(&list, &ExplorerList::revealed, this, [this](const std::string& path) { m_store.reveal(path); });
    connect(&list, &ExplorerList::menuWanted, this, &ExplorerFindings::openMenu);
}

Button* ExplorerFindings::stopButton() const {
    return m_progress->stopButton();
}

bool ExplorerFindings::isOnPath(const QWidget* widget) const {
    return m_path->isAncestorOf(widget);
}

QWidget* ExplorerFindings::firstStop() const {
    if (m_picture->isVisible()) {
        return m_picture;
    }
    const auto rows = m_folders->findChildren<ExplorerRowView*>();
    const auto first = std::find_if(rows.begin(), rows.end(), [](const ExplorerRowView* row) {
        return row->isVisible() && !row->focusStops().isEmpty();
    });
    return first == rows.end() ? nullptr : (*first)->focusStops().constFirst();
}

void ExplorerFindings::refresh() {
    const bool scanning = m_store.isExploring.get();
    const auto& progress = m_store.explorerProgress.get();
    const DiskExplorerResult& found = scanning && progress ? progress->found : m_store.explorerResult.get();
    refreshPath(scanning);
    refreshStrips(found, scanning);
    refreshLists(found, scanning);
    layout()->invalidate();
}

void ExplorerFindings::refreshPath(bool scanning) {
    const std::string root = m_store.explorerRoot.get().value_or(std::string());
    m_path->setFolder(ExplorerListing::crumbs(root, m_store.home()));
    m_path->setCounts(scanning ? QString() : shown(ExplorerListing::counts(m_store.explorerResult.get())));
    // What becomes possible comes first: the focus of what no longer is goes to it.
    m_path->setCanGoUp(!scanning && !ExplorerListing::parentOf(root).empty());
    m_path->setCanChoose(!scanning);
    const bool back = m_store.canGoBackInExplorer();
    const bool forward = m_store.canGoForwardInExplorer();
    if (back) {
        m_path->setCanGoBack(back);
    }
    m_path->setCanGoForward(forward);
    m_path->setCanGoBack(back);
}

void ExplorerFindings::refreshStrips(const DiskExplorerResult& found, bool scanning) {
    const bool incomplete = !scanning && ExplorerListing::isIncomplete(found);
    if (const auto& progress = m_store.explorerProgress.get(); scanning && progress) {
        m_progress->setProgress(translated("%1 inspected", {shown(ExplorerListing::grouped(found.inspectedFiles))}),
                                translated("%1 found", {shown(formatByteCount(found.measuredBytes()))}),
                                shown(ReadableText::path(progress->folder, m_store.home())));
    }
    if (incomplete) {
        m_incomplete->setSentence(Tone::warning, shown(ExplorerListing::incompleteText(found)));
    }
    m_progress->setVisible(scanning);
    m_incomplete->setVisible(incomplete);
    setGap(*m_belowStrip, scanning || incomplete ? belowStrip : 0);
}

void ExplorerFindings::refreshLists(const DiskExplorerResult& found, bool scanning) {
    const std::string root = m_store.explorerRoot.get().value_or(std::string());
    const std::vector<ExplorerRow> folders = ExplorerListing::folderRows(found);
    const std::vector<ExplorerRow> files = ExplorerListing::fileRows(found, root);
    m_picture->setTiles(
        explorerTiles(folders, found, [this](const std::string& folder) { return m_store.rememberedResult(folder); }));
    if (scanning || m_root != root) {
        m_outcome->setAccessibleName({});  // it told of another scan
    }
    if (m_root != root) {
        m_picture->startAt(ExplorerListing::childTowards(root, m_root));
        m_root = root;
    }
    m_picture->setCanExplore(!scanning);
    for (ExplorerList* list : {m_folders, m_files}) {
        list->setFolder(root);
        list->setCanExplore(!scanning);
    }
    m_folders->setRows(folders);
    m_files->setRows(files);
    // A file that is not in the result any more is not chosen either.
    const bool known =
        std::any_of(folders.begin(), folders.end(), [this](const ExplorerRow& row) { return row.path == m_chosen; }) ||
        std::any_of(files.begin(), files.end(), [this](const ExplorerRow& row) { return row.path == m_chosen; });
    if (!known) {
        choose({});
    }
    const bool showFiles = !scanning || !files.empty();
    m_folders->setVisible(!folders.empty());
    m_noFolders->setVisible(folders.empty() && !scanning);
    m_cut->setVisible(!scanning && ExplorerListing::isCut(found));
    m_filesHeading->setVisible(showFiles);
    m_files->setVisible(!files.empty());
    m_noFiles->setVisible(files.empty() && !scanning);
    setGap(*m_belowPicture, m_picture->tiles().empty() ? 0 : sectionGap);
    setGap(*m_aboveFiles, showFiles ? sectionGap : 0);
}

void ExplorerFindings::announce() {
    const DiskExplorerResult& result = m_store.explorerResult.get();
    const QString counts = shown(ExplorerListing::counts(result));
    m_outcome->setAccessibleName(result.stopped ? translated("Scan stopped. %1", {counts})
                                                : translated("Scan finished. %1", {counts}));
    QAccessibleEvent event(m_outcome, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    if (ExplorerListing::isIncomplete(result)) {
        m_incomplete->announce();
    }
}

void ExplorerFindings::choose(const std::string& path) {
    m_chosen = path;
    m_picture->setSelected(m_chosen);
    m_folders->setSelected(m_chosen);
    m_files->setSelected(m_chosen);
}

void ExplorerFindings::openMenu(const std::string& path, const QPoint& place) {
    if (path.empty()) {
        return;
    }
    const auto& rows = m_folders->rows();
    const bool isDirectory = std::any_of(
        rows.begin(), rows.end(), [&path](const ExplorerRow& row) { return row.path == path && row.isDirectory; });
    openExplorerMenu(m_store, {path, isDirectory}, place, *this);
}

void ExplorerFindings::bringRow() {
    const auto rows = m_folders->findChildren<ExplorerRowView*>();
    const auto chosen = std::find_if(rows.begin(), rows.end(), [this](const ExplorerRowView* row) {
        return row->isVisible() && row->row().path == m_chosen;
    });
    if (chosen != rows.end()) {
        Q_EMIT rowWanted(*chosen);
    }
}

void ExplorerFindings::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_rowWantedSoon.stop();
}

}  // namespace kestrune
