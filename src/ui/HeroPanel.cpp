#include "ui/HeroPanel.h"

#include <QPainter>
#include <algorithm>

#include "ui/Button.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int padding = 16;
constexpr int verticalPadding = 20;
constexpr int columnGap = 28;
constexpr int narrowGap = 20;
constexpr int narrowBelow = 700;
constexpr int unitGap = 5;

QString title() {
    return translated("Room to breathe");
}

QString text() {
    return translated(
        "Review build caches and model downloads in one place. Every cleanup starts with your selection.");
}

QString caption() {
    return translated("Build cache space to review");
}

}  // namespace

HeroPanel::HeroPanel(QWidget* parent)
    : Painted(parent), m_review(new Button(Button::Kind::primary, translated("Review storage"), this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(m_review, &Button::clicked, this, &HeroPanel::reviewWanted);
}

void HeroPanel::setFigure(const QString& value, const QString& unit) {
    setContent(value, unit, {});
}

void HeroPanel::setSentence(const QString& sentence) {
    setContent({}, {}, sentence);
}

void HeroPanel::setContent(const QString& value, const QString& unit, const QString& sentence) {
    if (m_value == value && m_unit == unit && m_sentence == sentence && !accessibleName().isEmpty()) {
        return;
    }
    m_value = value;
    m_unit = unit;
    m_sentence = sentence;
    const QString figure = sentence.isEmpty() ? QStringLiteral("%1 %2").arg(value, unit) : sentence;
    setSpoken(QStringLiteral("%1. %2 %3: %4").arg(title(), text(), caption(), figure));
    arrange();
    update();
}

int HeroPanel::figureWidth() const {
    const int figure = m_sentence.isEmpty() ? Metrics::tabularWidth(FontRole::figureLarge, m_value) + unitGap +
                                                  Metrics::width(FontRole::unitLarge, m_unit)
                                            : Metrics::width(FontRole::body, m_sentence);
    return std::max(figure, Metrics::width(FontRole::detail, caption()));
}

int HeroPanel::textWidth() const {
    const int gap = width() < narrowBelow ? narrowGap : columnGap;
    return std::max(Metrics::px(120), width() - 2 * padding - 2 * gap - figureWidth() - m_review->sizeHint().width());
}

int HeroPanel::wantedHeight() const {
    const int lines = static_cast<int>(Paint::wrapped(FontRole::body, text(), textWidth()).size());
    const int words = Metrics::lineHeight(FontRole::heading) + 4 + lines * Metrics::lineHeight(FontRole::body);
    const int figure = Metrics::lineHeight(FontRole::figureLarge) + Metrics::lineHeight(FontRole::detail);
    return 2 * verticalPadding + 2 + std::max(words, figure);
}

void HeroPanel::arrange() {
    setFixedHeight(wantedHeight());
    const QSize button = m_review->sizeHint();
    const QPoint place(width() - padding - button.width(), (height() - button.height()) / 2);
    m_review->setGeometry(Mirror::shown(*this, QRect(place, button)));
}

void HeroPanel::resizeEvent(QResizeEvent* event) {
    Painted::resizeEvent(event);
    arrange();
}

void HeroPanel::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    Paint::card(painter, rect());
    const int heading = Metrics::lineHeight(FontRole::heading);
    const int body = Metrics::lineHeight(FontRole::body);
    const int room = textWidth();
    const int lines = static_cast<int>(Paint::wrapped(FontRole::body, text(), room).size());
    int top = (height() - heading - 4 - lines * body) / 2;
    Paint::text(painter, QRect(padding, top, room, heading), FontRole::heading, Theme::colour(Colour::text1), title());
    top += heading + 4;
    Paint::paragraph(painter, QRect(padding, top, room, lines * body), FontRole::body, Theme::colour(Colour::text2),
                     text());

    const int gap = width() < narrowBelow ? narrowGap : columnGap;
    const int right = width() - padding - m_review->width() - gap;
    const int figure = Metrics::lineHeight(FontRole::figureLarge);
    const int detail = Metrics::lineHeight(FontRole::detail);
    const int figureTop = (height() - figure - detail) / 2;
    const QRect line(right - figureWidth(), figureTop, figureWidth(), figure);
    if (m_sentence.isEmpty()) {
        const int base = Paint::baseline(FontRole::figureLarge, line.top(), line.height());
        const int unit = Metrics::width(FontRole::unitLarge, m_unit);
        painter.setPen(Theme::colour(Colour::text2));
        Paint::word(painter, right - unit, base, FontRole::unitLarge, m_unit);
        painter.setPen(Theme::colour(Colour::text1));
        const int value = Metrics::tabularWidth(FontRole::figureLarge, m_value);
        Metrics::drawTabular(painter, right - unit - unitGap - value, base, FontRole::figureLarge, m_value);
    } else {
        Paint::text(painter, line, FontRole::body, Theme::colour(Colour::text2), m_sentence, Qt::AlignRight);
    }
    Paint::text(painter, QRect(line.left(), line.bottom() + 1, line.width(), detail), FontRole::detail,
                Theme::colour(Colour::text2), caption(), Qt::AlignRight);
}

}  // namespace kestrune
