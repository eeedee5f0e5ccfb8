#include "ui/Breadcrumb.h"

#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/Button.h"
#include "ui/CrumbButton.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/TabOrder.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int symbolSize = 16;
constexpr int groupGap = 12;
constexpr int smallGap = 4;
constexpr int smallestPath = 120;

QString separator() {
    return QStringLiteral("›");
}

QString labelOf(const ExplorerCrumb& crumb) {
    return QString::fromStdString(crumb.label);
}

QString readable(const ExplorerCrumb& crumb) {
    return QString::fromStdString(ExplorerListing::readablePath(crumb.path));
}

int separatorWidth() {
    return Metrics::width(FontRole::body, separator()) + 2;
}

Button* iconButton(const QString& name, const QString& symbol, QWidget* parent) {
    auto* button = new Button(Button::Kind::quiet, QString(), parent);
    button->setSymbol(symbol);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setEnabled(false);
    return button;
}

}  // namespace

Breadcrumb::Breadcrumb(QWidget* parent)
    : QWidget(parent),
      m_back(iconButton(translated("Back"), QStringLiteral("chevron.left"), this)),
      m_forward(iconButton(translated("Forward"), QStringLiteral("chevron.right"), this)),
      m_up(new Button(Button::Kind::quiet, translated("Up one folder"), this)),
      m_hidden(new CrumbButton(this)),
      m_current(new TextLabel(FontRole::bodyStrong, Colour::text1, this)),
      m_counts(new TextLabel(FontRole::detail, Colour::text3, this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_up->setSymbol(QStringLiteral("arrow.up"));
    m_up->setEnabled(false);
    m_hidden->setLabel(QStringLiteral("…"));
    m_hidden->setAccessibleName(translated("Folders above"));
    m_hidden->setToolTip(translated("Folders above"));
    m_hidden->hide();
    m_current->setFit(TextLabel::Fit::elideEnd);
    m_counts->setAlignment(Qt::AlignRight);
    connect(m_back, &Button::clicked, this, &Breadcrumb::backWanted);
    connect(m_forward, &Button::clicked, this, &Breadcrumb::forwardWanted);
    connect(m_up, &Button::clicked, this, &Breadcrumb::upWanted);
    connect(m_hidden, &CrumbButton::clicked, this, &Breadcrumb::openMenu);
}

void Breadcrumb::setFolder(std::vector<ExplorerCrumb> crumbs) {
    if (m_crumbs != crumbs) {
        m_crumbs = std::move(crumbs);
        place();
    }
}

void Breadcrumb::setCounts(const QString& counts) {
    if (m_counts->text() != counts) {
        m_counts->setText(counts);
        place();
    }
}

void Breadcrumb::setCanGoBack(bool can) {
    m_back->setEnabled(can);
}

void Breadcrumb::setCanGoForward(bool can) {
    m_forward->setEnabled(can);
}

void Breadcrumb::setCanGoUp(bool can) {
    m_up->setEnabled(can);
}

void Breadcrumb::setCanChoose(bool can) {
    m_canChoose = can;
    m_hidden->setEnabled(can);
    for (CrumbButton* button : m_buttons) {
        button->setEnabled(can);
    }
}

QSize Breadcrumb::sizeHint() const {
    return {Metrics::px(480), m_up->sizeHint().height()};
}

QSize Breadcrumb::minimumSizeHint() const {
    return {Metrics::px(320), m_up->sizeHint().height()};
}

int Breadcrumb::crumbWidth(std::size_t index) const {
    return CrumbButton::widthOf(labelOf(m_crumbs[index])) + separatorWidth();
}

void Breadcrumb::place() {
    const auto centred = [this](QWidget* piece, int left, QSize size) {
        piece->setGeometry(Mirror::shown(*this, QRect(QPoint(left, (height() - size.height()) / 2), size)));
        return left + size.width();
    };
    int left = centred(m_back, 0, m_back->sizeHint());
    left = centred(m_forward, left, m_forward->sizeHint());
    left = centred(m_up, left + Metrics::px(smallGap), m_up->sizeHint());
    m_symbolLeft = left + Metrics::px(groupGap);
    left = m_symbolLeft + Metrics::px(symbolSize) + Metrics::px(smallGap);
    const QSize counts = m_counts->sizeHint();
    centred(m_counts, width() - counts.width(), counts);
    const int besideCounts = width() - counts.width() - Metrics::px(groupGap);
    // In large text the counts give way before the path does.
    const bool fits = besideCounts - left >= Metrics::px(smallestPath);
    m_counts->setVisible(fits);
    const int right = fits ? besideCounts : width();
    showCrumbs(firstThatFits(right - left), left, right);
    update();
}

std::size_t Breadcrumb::firstThatFits(int room) const {
    if (m_crumbs.empty()) {
        return 0;
    }
    const std::size_t last = m_crumbs.size() - 1;
    const int hidden = m_hidden->sizeHint().width() + separatorWidth();
    int taken = Metrics::px(smallGap) + Metrics::width(FontRole::bodyStrong, labelOf(m_crumbs[last])) + 1;
    std::size_t first = last;
    while (first > 0) {
        taken += crumbWidth(first - 1);
        if (taken + (first > 1 ? hidden : 0) > room) {
            break;
        }
        --first;
    }
    return first;
}

void Breadcrumb::showCrumbs(std::size_t first, int left, int right) {
    const QWidget* focused = window()->focusWidget();
    const bool hadFocus = std::find(m_buttons.begin(), m_buttons.end(), focused) != m_buttons.end();
    const std::size_t ancestors = m_crumbs.empty() ? 0 : m_crumbs.size() - 1;
    m_firstShown = first;
    m_separators.clear();
    const auto put = [&](CrumbButton* button) {
        const QSize size = button->sizeHint();
        button->setGeometry(Mirror::shown(*this, QRect(QPoint(left, (height() - size.height()) / 2), size)));
        button->show();
        m_separators.push_back(left + size.width());
        left += size.width() + separatorWidth();
    };
    m_hidden->setVisible(first > 0);
    if (first > 0) {
        put(m_hidden);
    }
    while (m_buttons.size() < ancestors - first) {
        makeButton();
    }
    for (std::size_t index = 0; index < m_buttons.size(); ++index) {
        CrumbButton* button = m_buttons[index];
        if (first + index >= ancestors) {
            button->hide();
            continue;
        }
        const ExplorerCrumb& crumb = m_crumbs[first + index];
        button->setLabel(labelOf(crumb));
        button->setAccessibleName(translated("Explore: %1", {readable(crumb)}));
        button->setToolTip(asToolTip(readable(crumb)));
        put(button);
    }
    left += Metrics::px(smallGap);
    m_current->setText(m_crumbs.empty() ? QString() : labelOf(m_crumbs.back()));
    const int room = std::max(0, std::min(right - left, m_current->sizeHint().width()));
    const int line = m_current->sizeHint().height();
    m_current->setGeometry(Mirror::shown(*this, QRect(left, (height() - line) / 2, room, line)));
    if (hadFocus && !focused->isVisible()) {
        m_up->setFocus(Qt::OtherFocusReason);
    }
}

void Breadcrumb::makeButton() {
    auto* button = new CrumbButton(this);
    button->setEnabled(m_canChoose);
    QWidget* before = m_buttons.empty() ? m_hidden : m_buttons.back();
    putBehind(*before, *button);
    const std::size_t index = m_buttons.size();
    connect(button, &CrumbButton::clicked, this,
            [this, index] { Q_EMIT chosen(std::string(m_crumbs[m_firstShown + index].path)); });
    m_buttons.push_back(button);
}

void Breadcrumb::openMenu() {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The nearest folder first, as one goes up.
    for (std::size_t index = m_firstShown; index-- > 0;) {
        const QAction* action = menu->addAction(withoutMnemonic(labelOf(m_crumbs[index])));
        connect(action, &QAction::triggered, this, [this, path = m_crumbs[index].path] { Q_EMIT chosen(path); });
    }
    Mirror::popUpBelow(*menu, *m_hidden);
    menu->setActiveAction(menu->actions().constFirst());
}

void Breadcrumb::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(m_symbolLeft, (height() - symbol) / 2.0), QStringLiteral("folder"),
                Theme::colour(Colour::text2), symbol);
    for (const int left : m_separators) {
        Paint::text(painter, QRect(left, 0, separatorWidth(), height()), FontRole::body, Theme::colour(Colour::text2),
                    isRightToLeft() ? QStringLiteral("‹") : separator());
    }
}

void Breadcrumb::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void Breadcrumb::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        place();
    }
}

}  // namespace kestrune
