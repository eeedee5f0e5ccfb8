#pragma once

#include <QWidget>

namespace kestrune {

class Button;
class TextLabel;

/// What a page shows where it has nothing to list: a symbol, a title, a sentence and at most one button.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    explicit EmptyState(QWidget* parent = nullptr);

    /// Either text may be empty.
    void setContent(const QString& symbol, const QString& title, const QString& sentence);

    /// The button below the sentence; hidden until it has a label.
    [[nodiscard]] Button* button() const { return m_button; }

    void setSpaceAbove(int height);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
    TextLabel* m_title;
    TextLabel* m_sentence;
    Button* m_button;
};

}  // namespace kestrune
