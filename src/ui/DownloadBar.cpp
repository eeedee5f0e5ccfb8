#include "ui/DownloadBar.h"

#include <QPainter>
#include <algorithm>

#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int thickness = 4;
constexpr int whole = 100;  // percent

}  // namespace

DownloadBar::DownloadBar(QWidget* parent) : Moving(parent) {
    setFixedHeight(Metrics::px(thickness));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void DownloadBar::setProgress(std::int64_t bytes, std::int64_t total) {
    std::optional<int> percent;
    m_share = 0;
    if (total > 0) {
        m_share = std::clamp(static_cast<double>(bytes) / static_cast<double>(total), 0.0, 1.0);
        percent = static_cast<int>(m_share * whole);
    }
    update();
    if (m_percent != percent) {
        m_percent = percent;
        tellAmount();
    }
}

QString DownloadBar::accessibleValue() const {
    return m_percent ? translated("%1%", {QString::number(*m_percent)}) : QString();
}

std::optional<Painted::Amount> DownloadBar::accessibleAmount() const {
    return m_percent ? std::optional(Amount{static_cast<double>(*m_percent), whole}) : std::nullopt;
}

void DownloadBar::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    const QColor ground = Theme::colour(Colour::track);
    if (m_percent) {
        Paint::bar(painter, rect(), m_share, Theme::colour(Colour::chartLine), ground);
    } else {
        paintPassing(painter, rect(), ground);
    }
}

void DownloadBar::nextFrame() {
    if (!m_percent) {
        update();
    }
}

}  // namespace kestrune
