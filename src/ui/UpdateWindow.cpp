#include "ui/UpdateWindow.h"

#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "base/ByteCount.h"
#include "ui/Button.h"
#include "ui/DownloadBar.h"
#include "ui/NotesView.h"
#include "ui/SymbolPlate.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int windowWidth = 520;
constexpr int padding = 24;
constexpr int plateGap = 16;
constexpr int partGap = 10;
constexpr int aboveButtons = 20;
constexpr int buttonGap = 8;
constexpr int highestNotes = 220;
constexpr int frameHeight = 40;  // what a desktop puts around a window, at most

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("kestrune::UpdateWindow")) {
        return new QAccessibleWidget(static_cast<UpdateWindow*>(object), QAccessible::Dialog);
    }
    return nullptr;
}

TextLabel* wrapped(FontRole role, Colour colour, QWidget* parent) {
    auto* label = new TextLabel(role, colour, parent);
    label->setFit(TextLabel::Fit::wrap);
    return label;
}

QString amountOf(std::int64_t bytes, std::int64_t total) {
    const QString here = QString::fromStdString(formatByteCount(std::max<std::int64_t>(bytes, 0)));
    return total > 0 ? translated("%1 of %2", {here, QString::fromStdString(formatByteCount(total))}) : here;
}

void setLabel(Button& button, const QString& label) {
    button.setLabel(label);
    button.setVisible(!label.isEmpty());
}

}  // namespace

UpdateWindow::UpdateWindow(QWidget* parent)
    : QWidget(parent),
      m_plate(new SymbolPlate(QString(), this)),
      m_title(wrapped(FontRole::heading, Colour::text1, this)),
      m_text(wrapped(FontRole::body, Colour::text2, this)),
      m_notes(new NotesView(this)),
      m_bar(new DownloadBar(this)),
      m_amount(new TextLabel(FontRole::detail, Colour::text2, this)),
      m_primary(new Button(Button::Kind::primary, QString(), this)),
      m_secondary(new Button(Button::Kind::secondary, QString(), this)),
      m_quiet(new Button(Button::Kind::quiet, QString(), this)) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
    Theme::start();
    setWindowTitle(QStringLiteral("Kestrune"));
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowCloseButtonHint);
    m_notes->setAccessibleName(translated("What's new"));
    m_bar->setAccessibleName(translated("Progress"));
    auto* words = new QVBoxLayout;
    words->setSpacing(partGap);
    words->addWidget(m_title);
    words->addWidget(m_text);
    words->addWidget(m_notes);
    words->addWidget(m_bar);
    words->addWidget(m_amount);
    words->addStretch(1);
    words->addSpacing(aboveButtons);
    words->addLayout(makeButtons());
    auto* row = new QHBoxLayout(this);
    const int side = Metrics::px(padding);
    row->setContentsMargins(side, side, side, side);
    row->setSpacing(Metrics::px(plateGap));
    row->addWidget(m_plate, 0, Qt::AlignTop);
    row->addLayout(words, 1);
}

QLayout* UpdateWindow::makeButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(buttonGap);
    row->addWidget(m_quiet);
    row->addStretch(1);
    // KDE puts the default first, everybody else at the right.
    const int layout = style()->styleHint(QStyle::SH_DialogButtonLayout, nullptr, this);
    const bool defaultFirst = layout == QDialogButtonBox::KdeLayout;
    row->addWidget(defaultFirst ? m_primary : m_secondary);
    row->addWidget(defaultFirst ? m_secondary : m_primary);
    connect(m_primary, &Button::clicked, this, [this] { Q_EMIT answered(Answer::primary); });
    connect(m_secondary, &Button::clicked, this, [this] { Q_EMIT answered(Answer::secondary); });
    connect(m_quiet, &Button::clicked, this, [this] { Q_EMIT answered(Answer::quiet); });
    return row;
}

Button& UpdateWindow::button(Answer answer) const {
    switch (answer) {
        case Answer::primary:
            return *m_primary;
        case Answer::quiet:
            return *m_quiet;
        case Answer::secondary:
            break;
    }
    return *m_secondary;
}

void UpdateWindow::setContent(const UpdateContent& content) {
    m_plate->setSymbol(content.symbol);
    m_title->setText(content.title);
    m_text->setText(content.text);
    m_text->setVisible(!content.text.isEmpty());
    m_notes->setNotes(content.notes);
    m_notes->setVisible(!m_notes->toPlainText().isEmpty());
    m_bar->setVisible(content.hasBar);
    m_bar->setProgress(0, 0);
    m_amount->setText(QString());
    m_amount->hide();
    setLabel(*m_primary, content.primary);
    setLabel(*m_secondary, content.secondary);
    setLabel(*m_quiet, content.quiet);
    setAccessibleName(content.title);
    setAccessibleDescription(content.text);
    fit();
    if (isVisible()) {
        focusDefault();
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void UpdateWindow::setDownloaded(std::int64_t bytes, std::int64_t total) {
    const bool isFirst = m_amount->isHidden();
    m_bar->setProgress(bytes, total);
    m_amount->setText(amountOf(bytes, total));
    m_amount->show();
    if (isFirst) {
        fit();
    }
}

void UpdateWindow::fit() {
    const QSize room = screen()->availableSize() - QSize(0, Metrics::px(frameHeight));
    const int width = std::min(Metrics::px(windowWidth), room.width());
    const int inside = width - 2 * Metrics::px(padding) - m_plate->width() - Metrics::px(plateGap);
    m_notes->setFixedHeight(0);
    layout()->invalidate();
    layout()->activate();
    const int others = layout()->heightForWidth(width);
    const int most = std::min(Metrics::px(highestNotes), room.height() - others);
    m_notes->setFixedHeight(m_notes->wantedHeight(inside, most));
    layout()->invalidate();
    layout()->activate();
    setFixedSize(width, layout()->heightForWidth(width));
}

void UpdateWindow::focusDefault() {
    for (Button* button : {m_primary, m_secondary}) {
        if (!button->isHidden()) {
            button->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void UpdateWindow::present() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void UpdateWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    fit();
    focusDefault();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void UpdateWindow::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    Q_EMIT answered(Answer::secondary);
}

void UpdateWindow::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat() && !m_primary->isHidden()) {
        m_primary->click();
    } else if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void UpdateWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Theme::colour(Colour::window));
}

}  // namespace kestrune
