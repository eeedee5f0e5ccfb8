#include "ui/TextLabel.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

TextLabel::TextLabel(FontRole role, Colour colour, QWidget* parent) : QLabel(parent), m_role(role), m_colour(colour) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

TextLabel* TextLabel::paragraph(Colour colour, const QString& text, QWidget* parent) {
    constexpr int longestLine = 720;
    auto* label = new TextLabel(FontRole::body, colour, parent);
    label->setText(text);
    label->setFit(Fit::wrap);
    label->setLongestLine(Metrics::px(longestLine));
    return label;
}

void TextLabel::setFit(Fit fit) {
    m_fit = fit;
    // A fixed height would be the one of the size hint, whatever the width turns out to be.
    QSizePolicy policy(fit == Fit::natural ? QSizePolicy::Fixed : QSizePolicy::Preferred,
                       fit == Fit::wrap ? QSizePolicy::Preferred : QSizePolicy::Fixed);
    policy.setHeightForWidth(fit == Fit::wrap);
    setSizePolicy(policy);
}

void TextLabel::setColour(Colour colour) {
    if (m_colour != colour) {
        m_colour = colour;
        update();
    }
}

void TextLabel::setLongestLine(int width) {
    m_longestLine = width;
    updateGeometry();
}

void TextLabel::setLineHeight(int height) {
    m_lineHeight = height;
}

int TextLabel::line() const {
    return std::max(m_lineHeight, Metrics::lineHeight(m_role));
}

QStringList TextLabel::lines(int width) const {
    if (m_fit != Fit::wrap) {
        return {text()};
    }
    return Paint::wrapped(m_role, text(), m_longestLine > 0 ? std::min(width, m_longestLine) : width);
}

QSize TextLabel::sizeHint() const {
    const int natural = Metrics::width(m_role, text()) + 1;
    if (m_fit != Fit::wrap) {
        return {natural, line()};
    }
    const int width = m_longestLine > 0 ? std::min(natural, m_longestLine) : natural;
    return {width, heightForWidth(width)};
}

QSize TextLabel::minimumSizeHint() const {
    return m_fit == Fit::natural ? sizeHint() : QSize(std::min(Metrics::px(60), sizeHint().width()), line());
}

bool TextLabel::hasHeightForWidth() const {
    return m_fit == Fit::wrap;
}

int TextLabel::heightForWidth(int width) const {
    return static_cast<int>(lines(width).size()) * line();
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor colour = Theme::colour(m_colour);
    const auto elide = m_fit == Fit::elideMiddle ? Qt::ElideMiddle : Qt::ElideRight;
    int top = m_fit == Fit::wrap ? 0 : (height() - line()) / 2;
    const QStringList all = lines(width());
    for (const QString& one : all) {
        Paint::text(painter, QRect(0, top, width(), line()), m_role, colour, one, alignment(), elide);
        top += line();
    }
}

void TextLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    updateToolTip();
}

void TextLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        update();
    }
}

void TextLabel::updateToolTip() {
    const bool cut = (m_fit == Fit::elideEnd || m_fit == Fit::elideMiddle) && Metrics::width(m_role, text()) > width();
    setToolTip(cut ? asToolTip(text()) : QString());
}

}  // namespace kestrune
