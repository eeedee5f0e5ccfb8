#pragma once

#include <QPointer>
#include <QTimer>
#include <string>

#include "ui/Page.h"

namespace kestrune {

class DropHighlight;
class EmptyState;
class ExplorerFindings;
class ExplorerMeasuring;

/// Where the space of a folder goes: choosing it, watching it being measured, and walking through what was found.
class ExplorerPage final : public Page {
    Q_OBJECT

public:
    explicit ExplorerPage(WorkspaceStore& store, QWidget* parent = nullptr);

    /// How long a scan may take before the page turns to it: a short one is not worth the flicker.
    static constexpr int patience = 150;  // milliseconds

protected:
    void refresh() override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    enum class Stage { blank, empty, measuring, growing, result };

    void connectButtons();
    void addShortcuts();
    void noteScan();
    void showNow();
    [[nodiscard]] Stage stageNow() const;
    void enter(Stage stage, QWidget* focused);
    /// Where the keyboard focus, which was at focused, belongs now; null: where it is.
    [[nodiscard]] QWidget* focusFor(Stage stage, const QWidget& focused) const;
    void scrollToTopOfNewFolder();

    // In this order they are made, and the Tab key goes through them.
    Button* m_rescan;
    Button* m_choose;
    EmptyState* m_empty;
    ExplorerMeasuring* m_measuring;
    ExplorerFindings* m_findings;
    DropHighlight* m_drop;
    QPointer<QWidget> m_cameFrom;  // had the focus when the scan began
    Stage m_stage = Stage::blank;
    std::string m_folder;  // whose findings are shown
    QTimer m_soon{this};   // one refresh for what changes together
    QTimer m_patience{this};
    bool m_scanSeen = false;  // a scan began while the page was visible, and its end is not shown yet
    bool m_isRescan = false;  // of the folder that was shown when it began
};

}  // namespace kestrune
