#include "ui/AutomationPage.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <cstdint>

#include "base/ByteCount.h"
#include "ui/Button.h"
#include "ui/LocalTime.h"
#include "ui/NoteStrips.h"
#include "ui/Panel.h"
#include "ui/ProgressStrip.h"
#include "ui/SettingRow.h"
#include "ui/StatusRow.h"
#include "ui/Strip.h"
#include "ui/UiText.h"
#include "workspace/ActivityDays.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int buttonsAbove = 16;
constexpr int buttonGap = 8;

// A scan of this session, else the review that an earlier one started.
QString lastScanText(const WorkspaceStore& store) {
    const auto last = store.lastScan.get() ? store.lastScan.get() : store.lastReminder.get();
    const QString moment = last ? shown(dayAndTimeText(*last, store.now(), localOffset)) : translated("Not yet");
    return translated("Last scheduled scan: %1", {moment});
}

QString outcomeText(const std::vector<CleanTarget>& found) {
    std::int64_t bytes = 0;
    for (const CleanTarget& target : found) {
        bytes += target.sizeBytes;
    }
    return found.empty() ? translated("Scan finished. Nothing to review in the supported locations.")
                         : translated("Scan finished. %1 to review in Storage; nothing was moved.",
                                      {shown(formatByteCount(bytes))});
}

}  // namespace

AutomationPage::AutomationPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::automation, parent),
      m_progress(new ProgressStrip(this)),
      m_outcome(new Strip(this)),
      m_notes(new NoteStrips(body())),
      m_reminders(new SettingRow(translated("Enable daily scans and reminders"), body())),
      m_status(new StatusRow(body())),
      m_review(new Button(Button::Kind::primary, translated("Review storage now"), body())),
      m_stop(new Button(Button::Kind::secondary, translated("Stop scan"), body())),
      m_open(new Button(Button::Kind::secondary, translated("Open Storage"), body())) {
    m_progress->setCounted(true);
    m_progress->hide();
    m_outcome->hide();
    strips().addWidget(m_progress);
    strips().addWidget(m_outcome);
    content().addWidget(m_notes);
    addPanel();
    addButtons();
    content().addStretch(1);
    watch(store.reminders);
    watch(store.lastReminder);
    watch(store.lastScan);
    watch(store.isScanning);
    watch(store.isCleaning);
    watch(store.operationProgress);
}

void AutomationPage::addPanel() {
    auto* panel = new Panel(QStringLiteral("clock.arrow.circlepath"), translated("Daily storage review"), body());
    panel->addText(
        translated("Let Kestrune check for caches once a day and remind you to review them. You still choose what to "
                   "clean. Nothing is deleted or closed in the background."));
    panel->addRow(m_reminders);
    panel->addRow(m_status);
    content().addWidget(panel);
    connect(m_reminders, &SettingRow::asked, this, [this](bool on) { store().setReminders(on); });
}

void AutomationPage::addButtons() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, buttonsAbove, 0, 0);
    row->setSpacing(buttonGap);
    for (Button* button : {m_review, m_stop, m_open}) {
        row->addWidget(button);
    }
    row->addStretch(1);
    content().addLayout(row);
    connect(m_review, &Button::clicked, this, &AutomationPage::startReview);
    connect(m_stop, &Button::clicked, this, [this] { store().cancelCleanup(); });
    connect(m_open, &Button::clicked, this, [this] {
        m_state = Review::none;
        store().page.set(WorkspacePage::storage);
    });
}

void AutomationPage::startReview() {
    store().scan();
    if (store().isScanning.get()) {
        m_state = Review::running;
    }
    refresh();
}

void AutomationPage::followReview() {
    if (store().isScanning.get() && m_state == Review::finished) {
        m_state = Review::none;  // somebody else started this one
    } else if (!store().isScanning.get() && m_state == Review::running) {
        m_state = Review::finished;
    }
}

void AutomationPage::refresh() {
    followReview();
    m_reminders->setOn(store().reminders.get());
    refreshStatus();
    refreshReview();
    refreshButtons();
}

void AutomationPage::refreshStatus() {
    if (store().reminders.get()) {
        m_status->setTexts(lastScanText(store()),
                           translated("We’ll check again about 24 hours after the last scan while Kestrune is running. "
                                      "macOS controls whether reminders appear."));
    } else {
        m_status->setTexts(translated("Paused. Turn on when you'd like a daily review."), {});
    }
}

void AutomationPage::refreshReview() {
    const bool scanning = store().isScanning.get();
    if (scanning) {
        const OperationProgress& progress = store().operationProgress.get();
        m_progress->setProgress(translated("Scanning supported locations…"), progress.done, progress.total);
    }
    m_progress->setVisible(scanning);
    const bool finished = m_state == Review::finished;
    const bool complete = finished && store().scanNotes.get().empty();
    m_notes->setNotes(finished ? store().scanNotes.get() : std::vector<std::string>{});
    const bool isNew = complete && m_outcome->isHidden();
    if (complete) {
        m_outcome->setSentence(Tone::success, outcomeText(store().targets.get()));
    }
    m_outcome->setVisible(complete);
    if (isNew) {
        m_outcome->announce();
    }
    arrangeStrips();
}

void AutomationPage::refreshButtons() {
    const bool scanning = store().isScanning.get();
    const bool hadFocus = m_review->hasFocus() || m_stop->hasFocus();
    m_review->setEnabled(!scanning && !store().isCleaning.get());
    m_stop->setVisible(scanning);
    m_open->setVisible(!scanning && (m_state == Review::finished || store().lastScan.get().has_value()));
    // Whoever started a scan by keyboard finds the way to stop it under the same key, and then the way to its results.
    if (hadFocus && scanning) {
        m_stop->setFocus(Qt::TabFocusReason);
    } else if (hadFocus && !m_review->hasFocus()) {
        (m_open->isVisible() ? m_open : m_review)->setFocus(Qt::TabFocusReason);
    }
}

}  // namespace kestrune
