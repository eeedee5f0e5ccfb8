#pragma once

#include <QString>
#include <QWidget>

namespace kestrune {

/// The line of a disclosure that opens and closes it. Screen readers meet a button that is expanded or collapsed.
class DisclosureButton final : public QWidget {
    Q_OBJECT

public:
    explicit DisclosureButton(QString title, QWidget* parent = nullptr);

    /// Shows as open, without a signal.
    void setOpen(bool open);

    [[nodiscard]] bool isOpen() const { return m_open; }

    void toggle();

    [[nodiscard]] QSize sizeHint() const override;

    /// Where the title begins, and the text below it.
    [[nodiscard]] static int titleLeft();

Q_SIGNALS:
    void toggled(bool open);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_title;
    bool m_open = false;
    bool m_pressed = false;
};

}  // namespace kestrune
