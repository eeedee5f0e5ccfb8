#pragma once

#include <QPointer>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "ui/Painted.h"
#include "workspace/RunningListing.h"

class QScrollArea;

namespace kestrune {

class LiveRow;
class WorkspaceStore;

/// The rows of one kind of live list.
struct LiveRowKind {
    std::function<LiveRow*(QWidget* parent)> make;
    std::function<int(int width)> height;  ///< of each row of this width
};

/// A card of rows that follow a list of running processes. Rows are merged by process: focus, hover and scrolling
/// survive. While the user is at the list - the pointer over it, the keyboard in it, a menu or a question open - no row
/// moves; what ended stays in its place. Only rows near the visible part exist as widgets once the list is long. Up,
/// Down, Home, End and the page keys go from row to row.
class LiveRowList final : public Painted {
    Q_OBJECT

public:
    /// store outlives the list; it is asked what is protected and whether a question is open.
    LiveRowList(WorkspaceStore& store, const QString& spokenName, LiveRowKind kind, QWidget* parent = nullptr);

    /// Other processes, which the list does not show, but whose names do not tell its rows from them. Counts from the
    /// next setItems() or replaceItems() on.
    void setNamesakes(const std::vector<RunningItem>& others);

    /// Shows now, in its order unless the user is at the list.
    void setItems(std::vector<RunningItem> now);

    /// Shows now, in its order: the user chose to see something else.
    void replaceItems(std::vector<RunningItem> now);

    /// Protection or text size changed.
    void refreshRows();

    [[nodiscard]] bool isEmpty() const { return m_items.empty(); }

    [[nodiscard]] const std::vector<ListedItem>& items() const { return m_items; }

    /// The rows that exist, from the top down.
    [[nodiscard]] std::vector<LiveRow*> rows() const;

    /// True while no row may move.
    [[nodiscard]] bool isHeld() const;

    /// Gives the first row the keyboard focus.
    void takeFocus();

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::List; }

Q_SIGNALS:
    /// Nobody holds the list any more, and it shows its items in their order again.
    void settled();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Placed {
        std::size_t index;
        LiveRow* row;
    };

    struct Range {
        std::size_t first = 0;
        std::size_t last = 0;  // the one after the range

        [[nodiscard]] bool contains(std::size_t index) const { return index >= first && index < last; }
    };

    void merge(bool held);

    /// Catches up with what was held back, as soon as nothing holds the list.
    void settleSoon();
    void settle();
    void findScrollArea();
    void noteSharedNames();
    void measure();
    [[nodiscard]] Range visibleRange() const;
    [[nodiscard]] Range wantedRange() const;
    void followScroll();

    /// Makes the rows that are wanted exist, each where its process is.
    void place();
    [[nodiscard]] LiveRow* makeRow();
    void bind(const Placed& placed);
    void order();

    [[nodiscard]] std::size_t indexOf(const RunningItem& item) const;  ///< m_items.size() when it is not there
    [[nodiscard]] const Placed* placedWith(const QWidget* focused) const;
    bool moveFocus(int key);
    void focusRow(std::size_t index);

    WorkspaceStore& m_store;
    LiveRowKind m_kind;
    std::vector<RunningItem> m_now;
    std::vector<ListedItem> m_items;
    std::vector<std::string> m_namesakes;
    std::unordered_set<std::string> m_sharedNames;
    std::vector<Placed> m_placed;     // by index
    std::vector<LiveRow*> m_ordered;  // as screen readers and the Tab key go
    Range m_range;
    QScrollArea* m_area = nullptr;
    QPointer<QWidget> m_landed;  // where the keys brought the focus
    qsizetype m_column = 0;      // and the control they went along
    int m_rowHeight = 1;
    bool m_behind = false;  // held back something that m_now has
};

}  // namespace kestrune
