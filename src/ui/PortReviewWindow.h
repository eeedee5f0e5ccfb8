#pragma once

#include <QWidget>
#include <vector>

#include "base/Published.h"

class QHBoxLayout;
class QVBoxLayout;

namespace kestrune {

class EmptyState;
class LiveRowList;
class ScrollArea;
class SearchField;
class Strip;
class WorkspaceStore;

/// The small window that shows which process listens on which port, and offers to stop it. It reads the store's
/// published state and calls its operations. Closing only hides it. Main thread.
class PortReviewWindow final : public QWidget {
    Q_OBJECT

public:
    /// store outlives the window.
    explicit PortReviewWindow(WorkspaceStore& store, QWidget* parent = nullptr);

    /// Lists the processes anew and shows the window in the middle of the screen, in front of others and with the
    /// keyboard focus.
    void present();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QHBoxLayout* makeHeader();
    void watchStore();
    void centre();
    void showMessage();

    /// Lets the warning scroll where it would leave too little room for the rows.
    void arrangeWarning();

    /// Shows what the store holds now; userChose when something else was asked for.
    void refresh(bool userChose);
    void refreshEmpty();

    WorkspaceStore& m_store;
    SearchField* m_search;
    Strip* m_warning;
    Strip* m_message;
    ScrollArea* m_scroll;
    QVBoxLayout* m_top;      // stays in view
    QVBoxLayout* m_content;  // scrolls
    LiveRowList* m_list;
    EmptyState* m_empty;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace kestrune
