#include "ui/FlowRow.h"

#include <algorithm>

#include "ui/Mirror.h"

namespace kestrune {

FlowRow::FlowRow(int gap, int aboveAndBelow, QWidget* parent)
    : QWidget(parent), m_gap(gap), m_aboveAndBelow(aboveAndBelow) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void FlowRow::add(QWidget* control) {
    control->setParent(this);
    m_controls.push_back(control);
    updateGeometry();
}

std::vector<QRect> FlowRow::places(int width) const {
    std::vector<QRect> result;
    int left = 0;
    int top = m_aboveAndBelow;
    for (const QWidget* control : m_controls) {
        const QSize size = control->sizeHint();
        if (left > 0 && left + size.width() > width) {
            left = 0;
            top = result.back().bottom() + 1;
        }
        result.emplace_back(QPoint(left, top), size);
        left += size.width() + m_gap;
    }
    return result;
}

int FlowRow::heightForWidth(int width) const {
    const std::vector<QRect> all = places(width);
    return (all.empty() ? m_aboveAndBelow : all.back().bottom() + 1) + m_aboveAndBelow;
}

QSize FlowRow::sizeHint() const {
    int width = 0;
    for (const QWidget* control : m_controls) {
        width += control->sizeHint().width() + m_gap;
    }
    return {std::max(0, width - m_gap), heightForWidth(width)};
}

QSize FlowRow::minimumSizeHint() const {
    int widest = 0;
    for (const QWidget* control : m_controls) {
        widest = std::max(widest, control->sizeHint().width());
    }
    return {widest, sizeHint().height()};
}

void FlowRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const std::vector<QRect> all = places(width());
    for (std::size_t index = 0; index < all.size(); ++index) {
        m_controls[index]->setGeometry(Mirror::shown(*this, all[index]));
    }
}

}  // namespace kestrune
