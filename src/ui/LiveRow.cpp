#include "ui/LiveRow.h"

#include <QFocusEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/FocusRing.h"
#include "ui/Paint.h"
#include "ui/RunningText.h"
#include "ui/UiText.h"

namespace kestrune {

LiveRow::LiveRow(QWidget* parent) : ListRow(parent) {
}

QString LiveRow::name() const {
    return RunningText::name(m_state.item);
}

QString LiveRow::spokenName() const {
    return m_state.nameIsShared ? translated("%1, PID %2", {name(), QString::number(m_state.item.id)}) : name();
}

void LiveRow::setPictureSource(PictureSource source) {
    m_pictureSource = std::move(source);
}

AppIcon::Picture LiveRow::picture() const {
    return m_pictureSource ? m_pictureSource(m_state.item) : AppIcon::Picture{};
}

void LiveRow::setState(const LiveRowState& state) {
    m_state = state;
    stateChanged();
    const QList<QWidget*> stops = focusStops();
    const bool reachable =
        std::any_of(stops.begin(), stops.end(), [](const QWidget* stop) { return stop->isEnabled(); });
    setFocusPolicy(reachable ? Qt::NoFocus : Qt::TabFocus);
    update();
}

void LiveRow::setUsable(QWidget& control, bool usable) {
    if (!usable && window()->focusWidget() == &control) {
        setFocusPolicy(Qt::TabFocus);
        setFocus(Qt::OtherFocusReason);
    }
    control.setEnabled(usable);
}

void LiveRow::paintRow(QPainter& painter) {
    paintContent(painter);
    if (m_ringed) {
        Paint::innerRing(painter, rect(), Metrics::px(12) - 1);
    }
}

void LiveRow::focusInEvent(QFocusEvent* event) {
    ListRow::focusInEvent(event);
    m_ringed = FocusRing::isDue(event->reason());
    update();
}

void LiveRow::focusOutEvent(QFocusEvent* event) {
    ListRow::focusOutEvent(event);
    m_ringed = false;
    update();
}

}  // namespace kestrune
