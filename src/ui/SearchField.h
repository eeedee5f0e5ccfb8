#pragma once

#include <QLineEdit>

namespace kestrune {

/// A line to search in: a magnifying glass, a prompt that elides, and a clear mark once something is typed. Escape
/// clears.
class SearchField final : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchField(const QString& prompt, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QRect clearMark() const;

    QString m_prompt;
};

}  // namespace kestrune
