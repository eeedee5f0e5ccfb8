#pragma once

#include "ui/Page.h"

namespace kestrune {

class Button;
class NoteStrips;
class ProgressStrip;
class SettingRow;
class StatusRow;
class Strip;

/// The daily review: its switch, when it was last, and a scan at once. What a scan found is on the Storage page.
class AutomationPage final : public Page {
    Q_OBJECT

public:
    explicit AutomationPage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;

private:
    /// What became of the scan that was started here.
    enum class Review { none, running, finished };

    void addPanel();
    void addButtons();
    void startReview();
    void followReview();
    void refreshStatus();
    void refreshReview();
    void refreshButtons();

    ProgressStrip* m_progress;
    Strip* m_outcome;
    NoteStrips* m_notes;
    SettingRow* m_reminders;
    StatusRow* m_status;
    Button* m_review;
    Button* m_stop;
    Button* m_open;
    Review m_state = Review::none;
};

}  // namespace kestrune
