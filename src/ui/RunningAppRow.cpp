#include "ui/RunningAppRow.h"

#include <QSignalBlocker>
#include <algorithm>

#include "ui/Button.h"
#include "ui/Mirror.h"
#include "ui/ProtectionToggle.h"
#include "ui/RunningText.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int columnGap = 12;
constexpr int beforeQuit = 8;
constexpr int beforeMore = 8;
constexpr int beyondEdge = 6;  // the symbol of the last button ends where the row's content ends
constexpr int controlSize = 28;
constexpr int smallestName = 150;  // below it the controls go to a line of their own
constexpr int belowControls = 8;

int cpuWidth() {
    return Metrics::tabularWidth(FontRole::body, RunningText::cpu("8888.8"));
}

}  // namespace

RunningAppRow::RunningAppRow(QWidget* parent)
    : ProcessRow(parent),
      m_protection(new ProtectionToggle(this)),
      m_quit(new Button(Button::Kind::small, translated("Quit"), this)),
      m_more(new Button(Button::Kind::row, QString(), this)) {
    m_more->setSymbol(QStringLiteral("ellipsis"));
    // A click leaves the keyboard where it is: a list that has the keyboard in it stands still.
    for (QWidget* control : std::initializer_list<QWidget*>{m_protection, m_quit, m_more}) {
        control->setFocusPolicy(Qt::TabFocus);
    }
    connect(m_protection, &QAbstractButton::toggled, this, [this] {
        const RunningItem item = state().item;
        Q_EMIT protectionWanted(item);
    });
    connect(m_quit, &QAbstractButton::clicked, this, [this] {
        const RunningItem item = state().item;
        Q_EMIT quitWanted(item, false);
    });
    connect(m_more, &QAbstractButton::clicked, this, &RunningAppRow::openMenu);
}

int RunningAppRow::quitWidth() {
    return Metrics::width(FontRole::rowTitle, translated("Quit")) + 2 * Metrics::px(columnGap);
}

int RunningAppRow::controlsWidth() {
    return 2 * Metrics::px(controlSize) + Metrics::px(beforeQuit) + quitWidth() + Metrics::px(beforeMore) -
           Metrics::px(beyondEdge);
}

bool RunningAppRow::controlsBelow(int width) {
    const int figures = memoryWidth() + cpuWidth() + 3 * Metrics::px(columnGap);
    return width - sidePadding - nameLeft() - figures - controlsWidth() < Metrics::px(smallestName);
}

int RunningAppRow::heightAt(int width) {
    const int below = controlsBelow(width) ? Metrics::px(controlSize) + belowControls : 0;
    return ProcessRow::heightAt(width) + below;
}

int RunningAppRow::heightFor(int width) const {
    return heightAt(width);
}

int RunningAppRow::mainHeight() const {
    return ProcessRow::heightAt(width());
}

QList<QWidget*> RunningAppRow::focusStops() const {
    return {m_protection, m_quit, m_more};
}

bool RunningAppRow::isMenuOpen() const {
    return m_menu != nullptr && m_menu->isVisible();
}

int RunningAppRow::figuresRight() const {
    const int right = width() - sidePadding;
    return controlsBelow(width()) ? right : right - controlsWidth() - Metrics::px(columnGap);
}

int RunningAppRow::memoryRight() const {
    const int cpu = Metrics::tabularWidth(FontRole::body, RunningText::cpu(state().item.cpu));
    return figuresRight() - std::max(cpu, cpuWidth()) - Metrics::px(columnGap);
}

QStringList RunningAppRow::furtherFigures() const {
    return state().item.cpu.empty() ? QStringList() : QStringList(RunningText::cpu(state().item.cpu));
}

QString RunningAppRow::detail() const {
    const QString start = ProcessRow::detail();
    return state().ended || state().item.listeners.empty()
               ? start
               : translated("%1 · Open ports: %2", {start, RunningText::ports(state().item.listeners)});
}

void RunningAppRow::stateChanged() {
    ProcessRow::stateChanged();
    {
        const QSignalBlocker blocker(m_protection);
        m_protection->setChecked(state().isProtected);
    }
    m_protection->setAccessibleName(translated("Toggle protection for %1", {spokenName()}));
    m_quit->setAccessibleName(translated("Quit: %1", {spokenName()}));
    m_more->setAccessibleName(translated("More actions for %1", {spokenName()}));
    setUsable(*m_protection, !state().ended);
    setUsable(*m_quit, !state().ended && !state().isProtected);
    setUsable(*m_more, !state().ended && !state().isProtected);
}

void RunningAppRow::arrangeControls() {
    const int size = Metrics::px(controlSize);
    const int top = controlsBelow(width()) ? height() - belowControls - size : (mainHeight() - size) / 2;
    int left = width() - sidePadding - controlsWidth();
    m_protection->setGeometry(Mirror::shown(*this, QRect(left, top, size, size)));
    left += size + Metrics::px(beforeQuit);
    m_quit->setGeometry(Mirror::shown(*this, QRect(left, top, quitWidth(), size)));
    left += quitWidth() + Metrics::px(beforeMore);
    m_more->setGeometry(Mirror::shown(*this, QRect(left, top, size, size)));
}

void RunningAppRow::resizeEvent(QResizeEvent* event) {
    ProcessRow::resizeEvent(event);
    arrangeControls();
}

void RunningAppRow::hoverChanged(bool hovered) {
    m_more->setRowHovered(hovered);
}

void RunningAppRow::paintContent(QPainter& painter) {
    ProcessRow::paintContent(painter);
    paintFigure(painter, figuresRight(), FontRole::body, Colour::text2, RunningText::cpu(state().item.cpu));
}

void RunningAppRow::openMenu() {
    m_menu = new QMenu(this);
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    const QAction* force = m_menu->addAction(translated("Force Quit…"));
    connect(force, &QAction::triggered, this, [this, item = state().item] { Q_EMIT quitWanted(item, true); });
    connect(m_menu, &QMenu::aboutToHide, this, &LiveRow::menuClosed);
    Mirror::popUpBelow(*m_menu, *m_more, Mirror::Edge::end);
    m_menu->setActiveAction(m_menu->actions().constFirst());
}

}  // namespace kestrune
