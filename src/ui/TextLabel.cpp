#include "ui/TextLabel.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr qsizetype charactersMeasured = 1000;  // what is longer is wider than any window

}  // namespace

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

const QStringList& TextLabel::lines(int width) const {
    const int room = m_longestLine > 0 ? std::min(width, m_longestLine) : width;
    if (m_wrapped.width != room || m_wrapped.text != text() || m_wrapped.font != Metrics::font(m_role)) {
        m_wrapped = {text(), Metrics::font(m_role), room, Paint::wrapped(m_role, text(), room)};
    }
    return m_wrapped.lines;
}

QSize TextLabel::sizeHint() const {
    const bool wraps = m_fit == Fit::wrap;
    const int natural = Metrics::width(m_role, wraps ? text().left(charactersMeasured) : text()) + 1;
    if (!wraps) {
        return {natural, line()};
    }
    if (m_longestLine > 0 && natural > m_longestLine) {
        return {m_longestLine, heightForWidth(m_longestLine)};
    }
    return {natural, static_cast<int>(text().count(QLatin1Char('\n')) + 1) * line()};
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

void TextLabel::paintEvent(QPaintEvent* event) {
    MirrorPainter painter(this);
    const QColor colour = Theme::colour(m_colour);
    const auto elide = m_fit == Fit::elideMiddle ? Qt::ElideMiddle : Qt::ElideRight;
    int top = m_fit == Fit::wrap ? 0 : (height() - line()) / 2;
    if (m_fit != Fit::wrap) {
        Paint::text(painter, QRect(0, top, width(), line()), m_role, colour, text(), alignment(), elide);
        return;
    }
    for (const QString& one : lines(width())) {
        if (top + line() > event->rect().top() && top <= event->rect().bottom()) {
            Paint::text(painter, QRect(0, top, width(), line()), m_role, colour, one, alignment(), elide);
        }
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
