#include "ui/ExplorerMeasuring.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/IndeterminateBar.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int symbolSize = 48;
constexpr int spaceAbove = 128;

}  // namespace

ExplorerMeasuring::ExplorerMeasuring(QWidget* parent)
    : QWidget(parent),
      m_name(new TextLabel(FontRole::emptyTitle, Colour::text1, this)),
      m_stop(new Button(Button::Kind::secondary, translated("Stop scan"), this)) {
    m_name->setAlignment(Qt::AlignHCenter);
    m_name->setFit(TextLabel::Fit::elideEnd);
    auto* sentence = new TextLabel(FontRole::body, Colour::text2, this);
    sentence->setText(translated("Measuring folders and finding large files…"));
    auto* bar = new IndeterminateBar(this);
    bar->setAccessibleName(translated("Scan progress"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, spaceAbove, 0, 24);
    layout->setSpacing(0);
    layout->addSpacing(Metrics::px(symbolSize) + 16);
    layout->addWidget(m_name);
    layout->addSpacing(6);
    layout->addWidget(sentence, 0, Qt::AlignHCenter);
    layout->addSpacing(20);
    layout->addWidget(bar, 0, Qt::AlignHCenter);
    layout->addSpacing(24);
    layout->addWidget(m_stop, 0, Qt::AlignHCenter);
}

void ExplorerMeasuring::setFolderName(const QString& name) {
    m_name->setText(name);
}

void ExplorerMeasuring::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const int size = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF((width() - size) / 2.0, spaceAbove), QStringLiteral("folder"),
                Theme::colour(Colour::text3), size);
}

}  // namespace kestrune
