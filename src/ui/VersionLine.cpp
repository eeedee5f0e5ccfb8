#include "ui/VersionLine.h"

#include <QHBoxLayout>

#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/TextLabel.h"

namespace kestrune {

namespace {

QString divider() {
    return QStringLiteral(" · ");
}

}  // namespace

VersionLine::VersionLine(const QString& version, QWidget* parent)
    : QWidget(parent),
      m_version(new TextLabel(FontRole::rowTitle, Colour::text1, this)),
      m_status(new TextLabel(FontRole::body, Colour::text2, this)) {
    m_version->setText(version);
    m_version->setFit(TextLabel::Fit::natural);
    m_status->setFit(TextLabel::Fit::wrap);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Metrics::width(FontRole::body, divider()));
    layout->addWidget(m_version, 0, Qt::AlignTop);
    layout->addWidget(m_status, 1);
}

void VersionLine::setStatus(const QString& status) {
    if (m_status->text() != status) {
        m_status->setText(status);
        update();
    }
}

void VersionLine::paintEvent(QPaintEvent* /*event*/) {
    if (m_status->text().isEmpty()) {
        return;
    }
    MirrorPainter painter(this);
    const QRect version = Mirror::shown(*this, m_version->geometry());
    const QRect place(version.right() + 1, version.top(), layout()->spacing(), version.height());
    Paint::text(painter, place, FontRole::body, Theme::colour(Colour::text2), divider(), Qt::AlignHCenter);
}

}  // namespace kestrune
