#pragma once

#include <QAbstractButton>
#include <QString>

namespace kestrune {

/// A word in a line of text that can be pressed. The label is plain text, "&" included.
class CrumbButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit CrumbButton(QWidget* parent = nullptr);

    void setLabel(const QString& label);

    [[nodiscard]] static int widthOf(const QString& label);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_label;
};

}  // namespace kestrune
