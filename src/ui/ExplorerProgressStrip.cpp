#include "ui/ExplorerProgressStrip.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStringList>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/Button.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/ProgressStrip.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int side = 12;
constexpr int textLeft = 36;  // where the sentence beside the ring begins
constexpr int columnGap = 16;
constexpr int smallestFolder = 48;  // less of a path says nothing
constexpr int sentenceHeight = 28;

}  // namespace

ExplorerProgressStrip::ExplorerProgressStrip(QWidget* parent)
    : Painted(parent),
      m_running(new ProgressStrip(this)),
      m_stop(new Button(Button::Kind::secondary, translated("Stop scan"), this)) {
    setAccessibleName(translated("Found so far"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_running->setProgress(translated("Measuring folders and finding large files…"), 0, 0);
    m_running->setFixedHeight(std::max(Metrics::px(sentenceHeight), Metrics::lineHeight(FontRole::body)));
    auto* texts = new QVBoxLayout;
    texts->setContentsMargins(0, 4, 0, 9);
    texts->setSpacing(0);
    texts->addWidget(m_running);
    texts->addSpacing(Metrics::lineHeight(FontRole::detail));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Mirror::margins(*this, 0, 0, Metrics::px(side), 0));
    layout->setSpacing(0);
    layout->addLayout(texts, 1);
    layout->addWidget(m_stop, 0, Qt::AlignVCenter);
}

void ExplorerProgressStrip::setProgress(const QString& inspected, const QString& found, const QString& folder) {
    if (m_inspected != inspected || m_found != found || m_folder != folder) {
        m_inspected = inspected;
        m_found = found;
        m_folder = folder;
        update();
    }
}

QString ExplorerProgressStrip::accessibleValue() const {
    return QStringList{m_inspected, m_found, m_folder}.join(QStringLiteral(", "));
}

int ExplorerProgressStrip::paintFigure(QPainter& painter, const QRect& box, const QString& figure,
                                       const QString& widest) const {
    Metrics::drawTabular(painter, box.left(), Paint::baseline(FontRole::detail, box.top(), box.height()),
                         FontRole::detail, figure);
    const int taken =
        std::max(Metrics::tabularWidth(FontRole::detail, figure), Metrics::tabularWidth(FontRole::detail, widest));
    return taken + Metrics::px(columnGap);
}

void ExplorerProgressStrip::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    Paint::rounded(painter, rect(), 8, Theme::colour(Colour::tint));
    const QRect sentence = m_running->geometry();
    QRect box(Metrics::px(textLeft), sentence.bottom() + 1, 0, Metrics::lineHeight(FontRole::detail));
    box.setRight(Mirror::shown(*this, m_stop->geometry()).left() - Metrics::px(side));
    painter.setPen(Theme::colour(Colour::text2));
    box.setLeft(box.left() +
                paintFigure(painter, box, m_inspected, translated("%1 inspected", {QStringLiteral("000,000")})));
    box.setLeft(box.left() + paintFigure(painter, box, m_found, translated("%1 found", {QStringLiteral("000.00 GB")})));
    if (box.width() >= Metrics::px(smallestFolder)) {
        Paint::text(painter, box, FontRole::detail, Theme::colour(Colour::text2), m_folder, Qt::AlignLeft,
                    Qt::ElideMiddle);
    }
}

}  // namespace kestrune
