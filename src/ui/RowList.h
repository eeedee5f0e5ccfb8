#pragma once

#include <vector>

#include "ui/Painted.h"

namespace kestrune {

class ListRow;

/// A card that holds rows one below the other.
class RowList final : public Painted {
    Q_OBJECT

public:
    explicit RowList(const QString& spokenName, QWidget* parent = nullptr);

    /// Shows rows in this order. Rows that were there stay as they are; the caller keeps or deletes the others.
    void setRows(const std::vector<ListRow*>& rows);

    [[nodiscard]] const std::vector<ListRow*>& rows() const { return m_rows; }

    /// Puts what the rows focus after before (the list itself, where it stands right) in the tab order, and answers the
    /// last of it.
    QWidget* chainFocus(QWidget* before) const;

    /// A row wants another height.
    void arrange();

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::List; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void stack();

    std::vector<ListRow*> m_rows;
};

}  // namespace kestrune
