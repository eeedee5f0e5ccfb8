#include "ui/Disclosure.h"

#include <QResizeEvent>
#include <cmath>

#include "ui/DisclosureButton.h"
#include "ui/Mirror.h"
#include "ui/Motion.h"
#include "ui/TextLabel.h"

namespace kestrune {

namespace {

constexpr int unfoldingTime = 160;  // milliseconds
constexpr int longestLine = 660;
constexpr int detailLine = 17;

}  // namespace

Disclosure::Disclosure(const QString& title, const QString& text, QWidget* parent)
    : QWidget(parent),
      m_button(new DisclosureButton(title, this)),
      m_clip(new QWidget(this)),
      m_text(new TextLabel(FontRole::detail, Colour::text2, m_clip)) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_text->setText(text);
    m_text->setFit(TextLabel::Fit::wrap);
    m_text->setLongestLine(Metrics::px(longestLine));
    m_text->setLineHeight(Metrics::px(detailLine));
    m_clip->hide();
    m_unfolding.setStartValue(0.0);
    m_unfolding.setEndValue(1.0);
    connect(&m_unfolding, &QVariantAnimation::valueChanged, this, &Disclosure::place);
    connect(&m_unfolding, &QVariantAnimation::finished, this, &Disclosure::place);
    connect(m_button, &DisclosureButton::toggled, this, &Disclosure::toggled);
}

void Disclosure::setOpen(bool open) {
    if (isOpen() != open) {
        m_button->setOpen(open);
        toggled(open);
    }
}

bool Disclosure::isOpen() const {
    return m_button->isOpen();
}

void Disclosure::toggled(bool open) {
    m_unfolding.stop();
    m_unfolding.setDirection(open ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    m_unfolding.setDuration(Motion::duration(unfoldingTime));
    if (isVisible() && m_unfolding.duration() > 0) {
        m_unfolding.start();
    }
    place();
}

int Disclosure::textHeight(int width) const {
    const bool moving = m_unfolding.state() == QAbstractAnimation::Running;
    const double share = moving ? m_unfolding.currentValue().toDouble() : (isOpen() ? 1.0 : 0.0);
    return static_cast<int>(std::lround(share * m_text->heightForWidth(width - DisclosureButton::titleLeft())));
}

int Disclosure::heightForWidth(int width) const {
    return m_button->sizeHint().height() + textHeight(width);
}

QSize Disclosure::sizeHint() const {
    const int width = DisclosureButton::titleLeft() + m_text->sizeHint().width();
    return {width, heightForWidth(width)};
}

QSize Disclosure::minimumSizeHint() const {
    return {m_button->sizeHint().width(), m_button->sizeHint().height()};
}

void Disclosure::place() {
    const QSize button = m_button->sizeHint();
    m_button->setGeometry(Mirror::shown(*this, QRect(QPoint(0, 0), button)));
    const int left = DisclosureButton::titleLeft();
    const int shown = textHeight(width());
    m_clip->setGeometry(Mirror::shown(*this, QRect(left, button.height(), width() - left, shown)));
    m_text->setGeometry(0, 0, width() - left, m_text->heightForWidth(width() - left));
    // A text that is folded away is not read either.
    m_clip->setVisible(shown > 0);
    updateGeometry();
}

void Disclosure::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (event->oldSize().width() != event->size().width()) {
        place();
    }
}

void Disclosure::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_unfolding.stop();
    place();
}

}  // namespace kestrune
