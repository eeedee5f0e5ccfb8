#include "ui/VersionLine.h"

#include <algorithm>

#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/TextLabel.h"

namespace kestrune {

namespace {

constexpr int smallestStatus = 180;  // less beside the version is too little to read

QString divider() {
    return QStringLiteral(" · ");
}

int dividerWidth() {
    return Metrics::width(FontRole::body, divider());
}

}  // namespace

VersionLine::VersionLine(const QString& version, QWidget* parent)
    : QWidget(parent),
      m_version(new TextLabel(FontRole::rowTitle, Colour::text1, this)),
      m_status(new TextLabel(FontRole::body, Colour::text2, this)) {
    m_version->setText(version);
    m_version->setFit(TextLabel::Fit::natural);
    m_status->setFit(TextLabel::Fit::wrap);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void VersionLine::setStatus(const QString& status) {
    if (m_status->text() != status) {
        m_status->setText(status);
        updateGeometry();
        place();
        update();
    }
}

VersionLine::Places VersionLine::places(int width) const {
    const QRect version(QPoint(0, 0), m_version->sizeHint());
    const int beside = version.right() + 1 + dividerWidth();
    if (width - beside >= std::min(Metrics::px(smallestStatus), m_status->sizeHint().width())) {
        return {version, QRect(beside, 0, width - beside, m_status->heightForWidth(width - beside))};
    }
    return {version, QRect(0, version.bottom() + 1, width, m_status->heightForWidth(width))};
}

int VersionLine::heightForWidth(int width) const {
    const Places all = places(width);
    return std::max(all.version.bottom(), all.status.bottom()) + 1;
}

QSize VersionLine::sizeHint() const {
    const int width = m_version->sizeHint().width() + dividerWidth() + m_status->sizeHint().width();
    return {width, heightForWidth(width)};
}

QSize VersionLine::minimumSizeHint() const {
    return m_version->sizeHint();
}

void VersionLine::place() {
    const Places all = places(width());
    m_version->setGeometry(Mirror::shown(*this, all.version));
    m_status->setGeometry(Mirror::shown(*this, all.status));
}

void VersionLine::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void VersionLine::paintEvent(QPaintEvent* /*event*/) {
    const Places all = places(width());
    if (m_status->text().isEmpty() || all.status.top() > 0) {
        return;
    }
    MirrorPainter painter(this);
    const QRect between(all.version.right() + 1, 0, dividerWidth(), all.version.height());
    Paint::text(painter, between, FontRole::body, Theme::colour(Colour::text2), divider(), Qt::AlignHCenter);
}

}  // namespace kestrune
