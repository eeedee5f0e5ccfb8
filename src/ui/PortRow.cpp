#include "ui/PortRow.h"

#include <QPainter>
#include <algorithm>
#include <iterator>
#include <utility>

#include "ui/Button.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/PortSearch.h"
#include "ui/RunningText.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 52;
constexpr int columnGap = 12;
constexpr int buttonWidth = 124;
constexpr int buttonHeight = 28;
constexpr int belowButton = 8;
constexpr int smallestName = 150;      // below it the button goes to a line of its own
constexpr int sideBySideFrom = 320;    // name and ports together
constexpr double shareOfPorts = 0.43;  // of that room

}  // namespace

/// Where a row of one width has its parts.
struct PortRow::Columns {
    int nameRight = 0;
    int portsLeft = 0;  // 0: the ports stand under the name
    int portsRight = 0;
    bool buttonBelow = false;
    int mainHeight = 0;  // of the part with the name
    int height = 0;
};

PortRow::PortRow(QWidget* parent)
    : LiveRow(parent), m_stop(new Button(Button::Kind::small, translated("Stop process…"), this)) {
    // A click leaves the keyboard where it is: a list that has the keyboard in it stands still.
    m_stop->setFocusPolicy(Qt::TabFocus);
    connect(m_stop, &Button::clicked, this, [this] {
        const RunningItem item = state().item;
        Q_EMIT stopWanted(item);
    });
}

PortRow::Columns PortRow::columns(int width) {
    Columns result;
    const int gap = Metrics::px(columnGap);
    const int content = width - 2 * sidePadding;
    int room = content - Metrics::px(buttonWidth) - gap;
    result.buttonBelow = room < Metrics::px(smallestName);
    room = result.buttonBelow ? content : room;
    const int right = sidePadding + room;
    if (room >= Metrics::px(sideBySideFrom)) {
        result.portsLeft = right - static_cast<int>((room - gap) * shareOfPorts);
        result.portsRight = right;
    }
    result.nameRight = result.portsLeft > 0 ? result.portsLeft - gap : right;
    const int text = Metrics::lineHeight(FontRole::rowTitle) + 1 + Metrics::lineHeight(FontRole::detail);
    result.mainHeight = std::max(Metrics::px(rowHeight), text + 16);
    result.height = result.mainHeight + (result.buttonBelow ? Metrics::px(buttonHeight) + belowButton : 0);
    return result;
}

int PortRow::heightAt(int width) {
    return columns(width).height;
}

int PortRow::heightFor(int width) const {
    return heightAt(width);
}

QList<QWidget*> PortRow::focusStops() const {
    return {m_stop};
}

QString PortRow::ports() const {
    return RunningText::ports(state().item.listeners);
}

QString PortRow::endedText() const {
    return translated("No longer using a port");
}

QString PortRow::portsWithin(int room, FontRole role) const {
    const QString wanted = m_search ? m_search() : QString();
    std::vector<std::string> endpoints = state().item.listeners;
    const auto isWanted = [&](const std::string& endpoint) { return isSearchedEndpoint(endpoint, wanted); };
    const auto found = std::find_if(endpoints.begin(), endpoints.end(), isWanted);
    if (found != endpoints.end()) {
        const QString before = RunningText::ports({endpoints.begin(), std::next(found)});
        if (Metrics::width(role, before + QStringLiteral("…")) > room) {
            std::stable_partition(found, endpoints.end(), isWanted);
            std::rotate(endpoints.begin(), found, std::find_if_not(found, endpoints.end(), isWanted));
        }
    }
    return RunningText::ports(endpoints);
}

QString PortRow::detail(const QString& ports) const {
    const QString pid = RunningText::identifier(state().item.id);
    if (state().ended) {
        return QStringLiteral("%1 · %2").arg(pid, endedText());
    }
    return ports.isEmpty() ? pid : QStringLiteral("%1 · %2").arg(pid, ports);
}

void PortRow::setSearchSource(SearchSource source) {
    m_search = std::move(source);
}

void PortRow::stateChanged() {
    const bool safe = state().isProtected && !state().ended;
    m_stop->setKind(safe ? Button::Kind::success : Button::Kind::small);
    m_stop->setSymbol(safe ? QStringLiteral("lock.shield") : QString());
    m_stop->setLabel(safe ? translated("Protected") : translated("Stop process…"));
    m_stop->setAccessibleName(safe ? translated("Protected: %1", {spokenName()})
                                   : translated("Stop process: %1, %2", {spokenName(), ports()}));
    setUsable(*m_stop, !state().ended && !state().isProtected);
    QStringList parts{name()};
    if (state().isProtected) {
        parts.append(translated("Protected"));
    }
    parts.append(detail(ports()));
    setSpoken(parts.join(QStringLiteral(", ")));
    setAccessibleDescription(shown(state().item.executable));
}

void PortRow::arrangeControls() {
    const Columns place = columns(width());
    const QSize size(Metrics::px(buttonWidth), Metrics::px(buttonHeight));
    const int top = place.buttonBelow ? height() - belowButton - size.height() : (place.mainHeight - size.height()) / 2;
    m_stop->setGeometry(Mirror::shown(*this, QRect(QPoint(width() - sidePadding - size.width(), top), size)));
}

void PortRow::resizeEvent(QResizeEvent* event) {
    LiveRow::resizeEvent(event);
    arrangeControls();
}

void PortRow::paintContent(QPainter& painter) {
    const Columns place = columns(width());
    const bool beside = place.portsLeft > 0;
    const int titleLine = Metrics::lineHeight(FontRole::rowTitle);
    const int detailLine = Metrics::lineHeight(FontRole::detail);
    const QColor strong = Theme::colour(state().ended ? Colour::text3 : Colour::text1);
    const int room = place.nameRight - sidePadding;
    const int detailStart = Metrics::width(FontRole::detail, detail(QStringLiteral(" ")));
    int top = (place.mainHeight - titleLine - 1 - detailLine) / 2;
    Paint::text(painter, QRect(sidePadding, top, room, titleLine), FontRole::rowTitle, strong, name());
    top += titleLine + 1;
    Paint::text(painter, QRect(sidePadding, top, room, detailLine), FontRole::detail, Theme::colour(Colour::text3),
                detail(beside ? QString() : portsWithin(room - detailStart, FontRole::detail)));
    if (beside && !state().ended) {
        const QRect box(place.portsLeft, 0, place.portsRight - place.portsLeft, place.mainHeight);
        Paint::text(painter, box, FontRole::body, strong, portsWithin(box.width(), FontRole::body));
    }
}

QString PortRow::toolTipAt(const QPoint& at) const {
    const Columns place = columns(width());
    if (at.y() > place.mainHeight || at.x() > std::max(place.nameRight, place.portsRight)) {
        return {};
    }
    const bool beside = place.portsLeft > 0;
    if (beside && at.x() >= place.portsLeft) {
        return Metrics::width(FontRole::body, ports()) > place.portsRight - place.portsLeft ? ports() : QString();
    }
    const int room = place.nameRight - sidePadding;
    QString all = detail(beside ? QString() : ports());
    if (at.y() >= place.mainHeight / 2 && Metrics::width(FontRole::detail, all) > room) {
        return all;
    }
    QStringList lines;
    if (Metrics::width(FontRole::rowTitle, name()) > room) {
        lines.append(name());
    }
    if (!state().item.executable.empty()) {
        lines.append(shown(state().item.executable));
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace kestrune
