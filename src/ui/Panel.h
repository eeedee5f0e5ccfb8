#pragma once

#include <QString>
#include <vector>

#include "ui/Painted.h"

class QHBoxLayout;
class QVBoxLayout;

namespace kestrune {

class TextLabel;

/// A card with a symbol and a title, what belongs under the title, and rows below hairlines.
class Panel final : public Painted {
    Q_OBJECT

public:
    Panel(QString symbol, const QString& title, QWidget* parent = nullptr);

    /// A paragraph under the title.
    TextLabel* addText(const QString& text);

    /// Puts widget under what is under the title already, above pixels from it.
    void addPiece(QWidget* widget, int above);

    /// Puts button to the right of the title.
    void setAction(QWidget* button);

    /// Puts row below everything else, under a hairline.
    void addRow(QWidget* row);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void setBottom(int padding);

    QString m_symbol;
    QVBoxLayout* m_outer;
    QHBoxLayout* m_head;
    QVBoxLayout* m_words;
    TextLabel* m_title;
    std::vector<QWidget*> m_rows;
};

}  // namespace kestrune
