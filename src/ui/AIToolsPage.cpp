#include "ui/AIToolsPage.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "ui/Button.h"
#include "ui/LiveRowList.h"
#include "ui/ModelRow.h"
#include "ui/NoteStrips.h"
#include "ui/ProcessRow.h"
#include "ui/ProgressStrip.h"
#include "ui/RowList.h"
#include "ui/ScrollArea.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"
#include "workspace/RunningListing.h"
#include "workspace/StorageListing.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int headingGap = 4;
constexpr int listGap = 10;
constexpr int buttonGap = 8;
constexpr int buttonsAbove = 12;
constexpr int sectionGap = 28;

std::vector<CleanTarget> modelFolders(const std::vector<CleanTarget>& targets) {
    std::vector<CleanTarget> models;
    std::copy_if(targets.begin(), targets.end(), std::back_inserter(models),
                 [](const CleanTarget& target) { return target.category == CleanCategory::aiModels; });
    return models;
}

QString noModelsText(bool scanned) {
    return scanned ? translated(
                         "No model folders found in the places we check. Keep yours somewhere else? Choose "
                         "that folder in Disk Explorer.")
                   : translated("Nothing scanned yet. Scan now to see which model folders there are.");
}

}  // namespace

AIToolsPage::AIToolsPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::ai, parent),
      m_notes(new NoteStrips(body())),
      m_progress(new ProgressStrip(body())),
      m_models(new RowList(translated("Model folders"), body())),
      m_noModels(TextLabel::paragraph(Colour::text1, QString(), body())),
      m_review(pageButton(translated("Review model cleanup"), WorkspacePage::storage)),
      m_inspect(new Button(Button::Kind::secondary, translated("Inspect a custom folder"), body())),
      m_tools(new LiveRowList(store, translated("Running AI tools"),
                              {[](QWidget* list) { return new ProcessRow(list); }, &ProcessRow::heightAt}, body())),
      m_noTools(TextLabel::paragraph(
          Colour::text1, translated("No AI tools we recognize in the latest check. Refresh to check again."), body())),
      m_allApps(pageButton(translated("Review all running apps"), WorkspacePage::apps)) {
    addSection(translated("Your AI downloads"),
               translated("See how much space your model folders take. Open them in Finder before choosing what "
                          "goes; custom models may need a backup."));
    for (QWidget* part : std::vector<QWidget*>{m_notes, m_progress, m_models, m_noModels}) {
        content().addWidget(part);
    }
    m_review->setKind(Button::Kind::primary);
    connect(m_inspect, &Button::clicked, this, &AIToolsPage::inspectFolder);
    addButtons({m_review, m_inspect});
    content().addSpacing(sectionGap);
    addSection(translated("AI tools still running"),
               translated("We recognize tools such as Ollama and LM Studio by name. Some tools appear as Python or "
                          "another app; check Running Apps and Open Ports for those. Memory figures don’t include "
                          "every helper."));
    content().addWidget(m_tools);
    content().addWidget(m_noTools);
    addButtons({m_allApps});
    content().addStretch(1);
    watch(store.targets);
    watch(store.operationProgress);
    watch(store.lastScan);
    watch(store.scanNotes);
    watch(store.running);
    watch(store.processesListed);
    watch(store.protectedApps);
}

void AIToolsPage::addSection(const QString& title, const QString& text) {
    auto* heading = new TextLabel(FontRole::heading, Colour::text1, body());
    heading->setText(title);
    content().addWidget(heading);
    content().addSpacing(headingGap);
    content().addWidget(TextLabel::paragraph(Colour::text2, text, body()));
    content().addSpacing(listGap);
}

void AIToolsPage::addButtons(const std::vector<Button*>& buttons) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, buttonsAbove, 0, 0);
    row->setSpacing(buttonGap);
    for (Button* button : buttons) {
        row->addWidget(button);
    }
    row->addStretch(1);
    content().addLayout(row);
}

Button* AIToolsPage::pageButton(const QString& label, WorkspacePage page) {
    auto* button = new Button(Button::Kind::secondary, label, body());
    connect(button, &Button::clicked, this, [this, page] { store().page.set(page); });
    return button;
}

void AIToolsPage::inspectFolder() {
    store().chooseExplorerFolder();
    if (store().isExploring.get()) {
        store().page.set(WorkspacePage::explorer);
    }
}

ModelRow* AIToolsPage::rowFor(const CleanTarget& target) {
    ModelRow*& row = m_rows[target.id()];
    if (row == nullptr) {
        row = new ModelRow(target, m_models);
        connect(row, &ModelRow::revealWanted, this, [this, id = target.id()] { store().reveal(id); });
    }
    return row;
}

void AIToolsPage::refresh() {
    refreshModels();
    refreshTools();
}

void AIToolsPage::refreshModels() {
    const std::vector<CleanTarget> models = modelFolders(store().targets.get());
    std::int64_t largest = 1;
    for (const CleanTarget& model : models) {
        largest = std::max(largest, model.sizeBytes);
    }
    std::vector<ListRow*> rows;
    std::set<std::string> kept;
    for (const CleanTarget& model : models) {
        ModelRow* row = rowFor(model);
        row->setState({model, shown(abbreviatedPath(model.path, store().home())),
                       static_cast<double>(model.sizeBytes) / static_cast<double>(largest)});
        rows.push_back(row);
        kept.insert(model.id());
    }
    std::erase_if(m_rows, [&](const auto& known) {
        const bool gone = !kept.contains(known.first);
        if (gone) {
            known.second->hide();
            known.second->deleteLater();
        }
        return gone;
    });
    m_models->setRows(rows);
    m_models->chainFocus(m_models);
    const bool scanning = store().isScanning.get();
    const OperationProgress& progress = store().operationProgress.get();
    if (scanning) {
        m_progress->setProgress(translated("Looking for model folders…"), progress.done, progress.total);
    }
    m_noModels->setText(noModelsText(store().lastScan.get().has_value()));
    m_notes->setNotes(store().scanNotes.get());
    m_progress->setVisible(scanning);
    m_models->setVisible(!rows.empty());
    m_noModels->setVisible(rows.empty() && !scanning);
}

void AIToolsPage::refreshTools() {
    m_tools->setItems(aiTools(store().running.get()));
    m_tools->refreshRows();
    m_tools->setVisible(!m_tools->isEmpty());
    m_noTools->setVisible(m_tools->isEmpty() && store().processesListed.get());
}

}  // namespace kestrune
