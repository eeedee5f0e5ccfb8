#include "ui/ProcessRow.h"

#include <QPainter>
#include <algorithm>

#include "ui/AppIcon.h"
#include "ui/Chip.h"
#include "ui/Paint.h"
#include "ui/RunningText.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 52;
constexpr int columnGap = 12;
constexpr int chipGap = 8;
constexpr int aroundText = 16;  // above and below together
constexpr double endedOpacity = 0.45;

Chip protectedChip() {
    return {Chip::Kind::success, translated("Protected")};
}

}  // namespace

ProcessRow::ProcessRow(QWidget* parent) : LiveRow(parent) {
}

int ProcessRow::heightAt(int /*width*/) {
    const int text = Metrics::lineHeight(FontRole::rowTitle) + 1 + Metrics::lineHeight(FontRole::detail);
    return std::max(Metrics::px(rowHeight), text + aroundText);
}

int ProcessRow::heightFor(int width) const {
    return heightAt(width);
}

int ProcessRow::memoryWidth() {
    return Metrics::tabularWidth(FontRole::rowTitle, QStringLiteral("888,888 MB"));
}

int ProcessRow::nameLeft() {
    return sidePadding + Metrics::px(AppIcon::side) + Metrics::px(columnGap);
}

int ProcessRow::memoryRight() const {
    return width() - sidePadding;
}

int ProcessRow::mainHeight() const {
    return height();
}

int ProcessRow::nameRight() const {
    const int memory = Metrics::tabularWidth(FontRole::rowTitle, RunningText::memory(state().item.memoryMB));
    return memoryRight() - std::max(memory, memoryWidth()) - Metrics::px(columnGap);
}

QString ProcessRow::detail() const {
    const QString pid = RunningText::identifier(state().item.id);
    return state().ended ? QStringLiteral("%1 · %2").arg(pid, endedText()) : pid;
}

void ProcessRow::stateChanged() {
    QStringList parts{name()};
    if (state().isProtected) {
        parts.append(protectedChip().text);
    }
    parts.append(RunningText::memory(state().item.memoryMB));
    parts.append(furtherFigures());
    parts.append(detail());
    setSpoken(parts.join(QStringLiteral(", ")));
    setAccessibleDescription(shown(state().item.executable));
}

void ProcessRow::paintFigure(QPainter& painter, int right, FontRole role, Colour colour, const QString& text) const {
    painter.setPen(Theme::colour(state().ended ? Colour::text3 : colour));
    Metrics::drawTabular(painter, right - Metrics::tabularWidth(role, text), Paint::baseline(role, 0, mainHeight()),
                         role, text);
}

void ProcessRow::paintName(QPainter& painter) const {
    const int titleLine = Metrics::lineHeight(FontRole::rowTitle);
    const int detailLine = Metrics::lineHeight(FontRole::detail);
    int top = (mainHeight() - titleLine - 1 - detailLine) / 2;
    const int left = nameLeft();
    const int room = nameRight() - left;
    int nameRoom = room;
    if (state().isProtected) {
        const Chip chip = protectedChip();
        nameRoom = std::min(room - chipGap - chip.width(), Metrics::width(FontRole::rowTitle, name()));
        chip.draw(painter, left + nameRoom + chipGap, top, titleLine);
    }
    Paint::text(painter, QRect(left, top, nameRoom, titleLine), FontRole::rowTitle,
                Theme::colour(state().ended ? Colour::text3 : Colour::text1), name());
    top += titleLine + 1;
    Paint::text(painter, QRect(left, top, room, detailLine), FontRole::detail, Theme::colour(Colour::text3), detail());
}

void ProcessRow::paintContent(QPainter& painter) {
    const int side = Metrics::px(AppIcon::side);
    painter.setOpacity(state().ended ? endedOpacity : 1);
    AppIcon::draw(painter, QRect(sidePadding, (mainHeight() - side) / 2, side, side), state().item, picture());
    painter.setOpacity(1);
    paintName(painter);
    paintFigure(painter, memoryRight(), FontRole::rowTitle, Colour::text1, RunningText::memory(state().item.memoryMB));
}

QString ProcessRow::toolTipAt(const QPoint& at) const {
    if (at.y() > mainHeight() || at.x() > nameRight()) {
        return {};
    }
    const int room = nameRight() - nameLeft();
    if (at.y() >= mainHeight() / 2 && Metrics::width(FontRole::detail, detail()) > room) {
        return detail();
    }
    QStringList lines;
    const int chip = state().isProtected ? chipGap + protectedChip().width() : 0;
    if (Metrics::width(FontRole::rowTitle, name()) + chip > room) {
        lines.append(name());
    }
    if (!state().item.executable.empty()) {
        lines.append(shown(state().item.executable));
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace kestrune
