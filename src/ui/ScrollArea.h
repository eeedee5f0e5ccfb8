#pragma once

#include <QScrollArea>
#include <QTimer>

namespace kestrune {

class ScrollThumb;

/// A page's scrolling body: vertical only, without an edge, its thumb laid over the content while the pointer is over
/// the area or it scrolls.
class ScrollArea final : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollArea(QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void showThumb();
    void hideThumb();

    ScrollThumb* m_thumb;
    QTimer m_fade;
};

}  // namespace kestrune
