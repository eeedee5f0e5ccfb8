#pragma once

#include <QDialog>
#include <cstddef>
#include <vector>

#include "platform/AlertPresenter.h"

class QVBoxLayout;

namespace kestrune {

class Button;
class ScrollArea;

/// One alert: a symbol, a title, a block for each item, a paragraph and its buttons in the platform's order. Escape
/// and closing answer the last button.
class AlertDialog final : public QDialog {
    Q_OBJECT

public:
    explicit AlertDialog(const Alert& alert, QWidget* parent = nullptr);

    /// The index of the button pressed; the last one until then.
    [[nodiscard]] std::size_t answer() const { return m_answer; }

    /// The buttons in the order of the alert, which need not be the order on screen.
    [[nodiscard]] const std::vector<Button*>& buttons() const { return m_buttons; }

    void reject() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// Items and text on at most room pixels: what is higher scrolls.
    void addBody(const Alert& alert, int room, QVBoxLayout& column);
    [[nodiscard]] QWidget* scrolling(QWidget& content, int inside, int height);
    [[nodiscard]] QLayout* makeButtons(const std::vector<std::string>& titles);

    ScrollArea* m_scroll = nullptr;
    std::vector<Button*> m_buttons;
    std::size_t m_answer = 0;
};

}  // namespace kestrune
