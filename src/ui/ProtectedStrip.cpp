#include "ui/ProtectedStrip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cstddef>
#include <iterator>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/TabOrder.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int symbolSize = 18;
constexpr int symbolLeft = 16;
constexpr int symbolGap = 10;
constexpr int lineHeight = 44;
constexpr int furtherLine = 32;
constexpr int rightEdge = 8;
constexpr int beforeLine = 4;
constexpr int afterLine = 14;
constexpr int longestName = 220;
constexpr int buttonHeight = 28;
constexpr std::size_t mostNames = 200;

QString title() {
    return translated("Protected apps");
}

int titleLeft() {
    return Metrics::px(symbolLeft) + Metrics::px(symbolSize) + Metrics::px(symbolGap);
}

int firstLine() {
    return std::max(Metrics::px(lineHeight), Metrics::lineHeight(FontRole::rowTitle) + 16);
}

// A name of white space alone, or of nothing, shows where it is.
QString labelOf(const std::string& name) {
    const QString text = shown(name);
    return text.trimmed().isEmpty() ? QStringLiteral("“%1”").arg(text) : text;
}

int nextLine() {
    return std::max(Metrics::px(furtherLine), Metrics::px(buttonHeight) + 2);
}

int nameWidth(const QString& name) {
    return std::min(Metrics::px(longestName), Metrics::width(FontRole::body, name) + 1);
}

}  // namespace

ProtectedStrip::ProtectedStrip(QWidget* parent) : Painted(parent) {
    setAccessibleName(title());
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ProtectedStrip::setNames(const std::set<std::string>& all) {
    const std::size_t count = std::min(all.size(), mostNames);
    const std::set<std::string> names(all.begin(), std::next(all.begin(), static_cast<std::ptrdiff_t>(count)));
    const std::size_t more = all.size() - count;
    if (more == m_more && std::equal(names.begin(), names.end(), m_entries.begin(), m_entries.end(),
                                     [](const std::string& name, const Entry& entry) { return name == entry.name; })) {
        return;
    }
    std::vector<Entry> entries;
    QWidget* before = this;
    for (const std::string& name : names) {
        const auto known =
            std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.name == name; });
        Button* remove = known == m_entries.end() ? nullptr : std::exchange(known->remove, nullptr);
        if (remove == nullptr) {
            remove = makeButton(name);
        }
        remove->raise();
        putBehind(*before, *remove);
        before = remove;
        entries.push_back({name, remove, {}, {}});
    }
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        if (Button* gone = m_entries[place].remove; gone != nullptr) {
            retire(place, *gone, entries);
        }
    }
    m_entries = std::move(entries);
    m_more = more;
    setAccessibleDescription(moreText());
    updateGeometry();
    arrange();
}

Button* ProtectedStrip::makeButton(const std::string& name) {
    auto* remove = new Button(Button::Kind::row, translated("Remove protection"), this);
    remove->setAccessibleName(translated("Remove protection: %1", {labelOf(name)}));
    // A click leaves the keyboard where it is: nobody wants to find it elsewhere once the button is gone.
    remove->setFocusPolicy(Qt::TabFocus);
    connect(remove, &Button::clicked, this, [this, name] { Q_EMIT removalWanted(name); });
    remove->show();
    return remove;
}

void ProtectedStrip::retire(std::size_t place, Button& button, const std::vector<Entry>& now) {
    if (window()->focusWidget() == &button) {
        if (now.empty()) {
            Q_EMIT focusLeft();
        } else {
            now[std::min(place, now.size() - 1)].remove->setFocus(Qt::TabFocusReason);
        }
    }
    button.hide();
    button.deleteLater();
}

int ProtectedStrip::lay(std::vector<Entry>& entries, int width) const {
    const int gap = Metrics::px(beforeLine) + Metrics::px(afterLine);
    const int right = width - Metrics::px(rightEdge);
    const auto widthOf = [](const Entry& entry) {
        return nameWidth(labelOf(entry.name)) + entry.remove->sizeHint().width();
    };
    int all = 0;
    for (const Entry& entry : entries) {
        all += widthOf(entry) + (all > 0 ? gap : 0);
    }
    const int beside = titleLeft() + Metrics::width(FontRole::rowTitle, title()) + Metrics::px(24);
    const bool oneLine = all <= right - beside;
    const int start = oneLine ? right - all : titleLeft();
    const int line = nextLine();
    int top = oneLine ? 0 : firstLine() - Metrics::px(4);
    const int height = oneLine ? firstLine() : line;
    int left = start;
    for (Entry& entry : entries) {
        entry.parted = left > start;
        if (entry.parted && left + gap + widthOf(entry) > right) {
            left = start;
            top += line;
            entry.parted = false;
        }
        left += entry.parted ? gap : 0;
        const QSize button = entry.remove->sizeHint();
        const int room =
            std::min(nameWidth(labelOf(entry.name)), std::max(Metrics::px(40), right - left - button.width()));
        entry.text = QRect(left, top, room, height);
        entry.button = QRect(QPoint(left + room, top + (height - button.height()) / 2), button);
        left += room + button.width();
    }
    return oneLine ? firstLine() : top + line * (m_more > 0 ? 2 : 1) + Metrics::px(8);
}

QString ProtectedStrip::moreText() const {
    return m_more == 0 ? QString() : translatedCount("and %1 more", "and %1 more", static_cast<std::int64_t>(m_more));
}

void ProtectedStrip::arrange() {
    lay(m_entries, width());
    for (const Entry& entry : m_entries) {
        entry.remove->setGeometry(Mirror::shown(*this, entry.button));
    }
    update();
}

QSize ProtectedStrip::sizeHint() const {
    return {Metrics::px(400), firstLine()};
}

QSize ProtectedStrip::minimumSizeHint() const {
    return {Metrics::px(240), firstLine()};
}

int ProtectedStrip::heightForWidth(int width) const {
    std::vector<Entry> entries = m_entries;
    return lay(entries, width);
}

void ProtectedStrip::resizeEvent(QResizeEvent* event) {
    Painted::resizeEvent(event);
    arrange();
}

bool ProtectedStrip::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        for (const Entry& entry : m_entries) {
            const QString name = labelOf(entry.name);
            if (entry.text.contains(Mirror::laidOut(*this, help->pos())) &&
                Metrics::width(FontRole::body, name) > entry.text.width()) {
                QToolTip::showText(help->globalPos(), asToolTip(name), this);
                return true;
            }
        }
        QToolTip::hideText();
        return true;
    }
    return Painted::event(event);
}

void ProtectedStrip::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    Paint::card(painter, rect());
    const int size = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(Metrics::px(symbolLeft), (firstLine() - size) / 2.0), QStringLiteral("lock.shield"),
                Theme::colour(Colour::success), size);
    Paint::text(painter, QRect(titleLeft(), 0, width() - titleLeft(), firstLine()), FontRole::rowTitle,
                Theme::colour(Colour::text1), title());
    Paint::text(painter, QRect(titleLeft(), height() - Metrics::px(8) - nextLine(), width() - titleLeft(), nextLine()),
                FontRole::body, Theme::colour(Colour::text2), moreText());
    for (const Entry& entry : m_entries) {
        Paint::text(painter, entry.text, FontRole::body, Theme::colour(Colour::text1), labelOf(entry.name));
        if (entry.parted) {
            const int x = entry.text.left() - Metrics::px(afterLine);
            painter.fillRect(QRect(x, entry.button.top(), 1, entry.button.height()), Theme::colour(Colour::separator));
        }
    }
}

}  // namespace kestrune
