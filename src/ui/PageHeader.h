#pragma once

#include <QWidget>

class QHBoxLayout;

namespace kestrune {

class Button;

/// A page's title, its subtitle and up to three buttons at the right. It does not scroll.
class PageHeader final : public QWidget {
    Q_OBJECT

public:
    PageHeader(const QString& title, const QString& subtitle, QWidget* parent = nullptr);

    /// Adds a button after those already there.
    Button* addButton(const QString& label, const QString& symbol = {});

    void setSideMargin(int margin);

private:
    QHBoxLayout* m_layout;
    QHBoxLayout* m_buttons;
};

}  // namespace kestrune
