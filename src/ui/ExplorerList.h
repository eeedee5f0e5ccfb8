#pragma once

#include <QPoint>
#include <QPointer>
#include <QString>
#include <string>
#include <vector>

#include "ui/Painted.h"
#include "workspace/ExplorerListing.h"

namespace kestrune {

class ExplorerRowView;

/// A card of bar rows. Each place has a widget that shows another row when the order changes: nothing is built anew.
/// While somebody is at the list - the pointer moves over it, the keyboard goes through it, a menu or a question is
/// open - no row moves. Up, Down, Home, End and the page keys go from row to row along one control.
class ExplorerList final : public Painted {
    Q_OBJECT

public:
    explicit ExplorerList(const QString& accessibleName, QWidget* parent = nullptr);

    /// The folder that the rows to come are about. Rows about another one than before are shown at once, and in their
    /// order until somebody moves the pointer or presses a key here.
    void setFolder(const std::string& folder);

    /// Shows rows, in their order unless the list is held. They are told apart by path.
    void setRows(const std::vector<ExplorerRow>& rows);

    /// Whether the folders of the rows can be explored now.
    void setCanExplore(bool can);

    /// The row with this path is the chosen one; none for an empty path.
    void setSelected(const std::string& path);

    /// The row with this path looks as if the pointer were on it; none for an empty path.
    void setHighlighted(const std::string& path);

    /// Sizes and text size changed.
    void arrange();

    /// What is shown, from the top down.
    [[nodiscard]] const std::vector<ExplorerRow>& rows() const { return m_shown; }

    /// True while no row may move.
    [[nodiscard]] bool isHeld() const;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::List; }

Q_SIGNALS:
    /// The pointer or the keyboard came to the row with this path; empty: it left.
    void hovered(const std::string& path);
    void selected(const std::string& path);
    void explored(const std::string& path);
    void revealed(const std::string& path);
    void menuWanted(const std::string& path, const QPoint& global);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    /// Where the keyboard is, apart from the widgets, which change what they show.
    struct FocusPlace {
        bool isOnList = false;
        bool byKeyboard = true;
        std::string path;  // of the row; empty: on the list, which has no rows yet
        std::size_t index = 0;
        qsizetype stop = 0;
    };

    void reset();
    void show(std::vector<ExplorerRow> rows);
    void makeRow();
    void settleSoon() const;
    void settle();
    void choose(const std::string& path);
    void askForMenu(const std::string& path, const QPoint& global);
    [[nodiscard]] ExplorerRowView* rowWithFocus() const;
    bool moveFocus(int key);
    void focusRow(std::size_t index);
    [[nodiscard]] int rowsInView() const;
    [[nodiscard]] FocusPlace focusPlace() const;

    /// Brings the focus to where its row is now; to the first row where other rows came.
    void followFocus(const FocusPlace& place);
    void tellHovered();

    std::vector<ExplorerRow> m_now;
    std::vector<ExplorerRow> m_shown;
    std::vector<ExplorerRowView*> m_rows;  // as many as were ever needed; those behind m_shown are hidden
    std::string m_folder;
    std::string m_selected;
    std::string m_highlighted;
    std::string m_hovered;
    QPointer<QWidget> m_landed;  // where the keys brought the focus
    qsizetype m_column = 0;      // and the control they went along
    QPoint m_pointerAtReset;
    bool m_canExplore = true;
    bool m_awaitsByKeyboard = true;  // the focus lies on the list until there are rows
    bool m_untouched = true;         // since other rows came
    bool m_behind = false;           // held back something that m_now has
};

}  // namespace kestrune
