#pragma once

#include <QString>
#include <QVariantAnimation>
#include <QWidget>

namespace kestrune {

class DisclosureButton;
class TextLabel;

/// A title that shows and hides the text below it.
class Disclosure final : public QWidget {
    Q_OBJECT

public:
    Disclosure(const QString& title, const QString& text, QWidget* parent = nullptr);

    void setOpen(bool open);
    [[nodiscard]] bool isOpen() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void toggled(bool open);
    void place();
    [[nodiscard]] int textHeight(int width) const;

    DisclosureButton* m_button;
    QWidget* m_clip;  // what is seen of the text while it unfolds
    TextLabel* m_text;
    QVariantAnimation m_unfolding;  // 0 closed, 1 open
};

}  // namespace kestrune
