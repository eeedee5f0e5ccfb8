#include "ui/TabOrder.h"

#include <QWidget>

namespace kestrune {

namespace {

// Qt gives a place only to what takes the focus.
class TakesFocus final {
public:
    explicit TakesFocus(QWidget& widget) : m_widget(widget), m_policy(widget.focusPolicy()) {
        if (m_policy == Qt::NoFocus) {
            m_widget.setFocusPolicy(Qt::TabFocus);
        }
    }

    TakesFocus(const TakesFocus&) = delete;
    TakesFocus& operator=(const TakesFocus&) = delete;

    ~TakesFocus() { m_widget.setFocusPolicy(m_policy); }

private:
    QWidget& m_widget;
    const Qt::FocusPolicy m_policy;
};

}  // namespace

void putBehind(QWidget& before, QWidget& next) {
    const TakesFocus first(before);
    const TakesFocus second(next);
    QWidget::setTabOrder(&before, &next);
}

}  // namespace kestrune
