#include "ui/Strip.h"

#include <QHBoxLayout>
#include <QPainter>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

struct Look {
    const char* symbol;
    Colour sign;
    Colour ground;
};

Look lookOf(Tone tone) {
    switch (tone) {
        case Tone::success:
            return {"checkmark.circle", Colour::success, Colour::successTint};
        case Tone::warning:
            return {"exclamationmark.triangle", Colour::warning, Colour::warningTint};
        case Tone::danger:
            return {"exclamationmark.circle", Colour::danger, Colour::dangerTint};
        case Tone::info:
            break;
    }
    return {"info.circle", Colour::accentText, Colour::tint};
}

int textLeft() {
    return Metrics::px(12) + Metrics::px(16) + Metrics::px(10);
}

}  // namespace

Strip::Strip(QWidget* parent)
    : Painted(parent),
      m_label(new TextLabel(FontRole::body, Colour::text1, this)),
      m_close(new Button(Button::Kind::quiet, QString(), this)) {
    m_label->setFit(TextLabel::Fit::wrap);
    m_close->setSymbol(QStringLiteral("xmark"));
    m_close->setAccessibleName(translated("Close message"));
    m_close->setToolTip(translated("Close message"));
    m_close->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Mirror::margins(*this, textLeft(), 4, 4, 4));
    layout->setSpacing(8);
    layout->addWidget(m_label, 1, Qt::AlignVCenter);
    layout->addWidget(m_close, 0, Qt::AlignTop);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMinimumHeight(Metrics::px(36));
    connect(m_close, &Button::clicked, this, &Strip::closed);
}

QString Strip::sentence() const {
    return m_label->text();
}

void Strip::setSentence(Tone tone, const QString& sentence) {
    if (m_tone == tone && m_label->text() == sentence) {
        return;
    }
    m_tone = tone;
    m_label->setText(sentence);
    setSpoken(sentence);
    update();
}

void Strip::setClosable(bool closable) {
    m_close->setVisible(closable);
    const int around = closable ? 4 : 9;
    layout()->setContentsMargins(Mirror::margins(*this, textLeft(), around, closable ? 4 : 12, around));
}

void Strip::announce() {
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void Strip::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    const Look look = lookOf(m_tone);
    Paint::rounded(painter, rect(), 8, Theme::colour(look.ground));
    const int size = Metrics::px(16);
    const int line = Metrics::lineHeight(FontRole::body);
    Icons::draw(painter, QPointF(Metrics::px(12), m_label->y() + (line - size) / 2.0), QLatin1String(look.symbol),
                Theme::colour(look.sign), size);
}

}  // namespace kestrune
