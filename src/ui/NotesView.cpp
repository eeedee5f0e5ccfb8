#include "ui/NotesView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "ui/FocusRing.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/ScrollThumb.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int margin = 12;
constexpr int verticalMargin = 8;
constexpr qsizetype mostCharacters = 20'000;
constexpr qsizetype longestLine = 2'000;  // laying out one endless line would hold the window up

QString readable(const std::string& text) {
    QString all = QString::fromStdString(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
    all.replace(QLatin1Char('\t'), QLatin1String("    "));
    const bool isCut = all.size() > mostCharacters;
    QStringList lines = shownLines(all.left(mostCharacters).toStdString()).split(QLatin1Char('\n'));
    for (QString& line : lines) {
        for (qsizetype end = longestLine; end < line.size(); end += longestLine + 1) {
            line.insert(end, QLatin1Char('\n'));
        }
    }
    return lines.join(QLatin1Char('\n')).trimmed() + (isCut ? QStringLiteral("…") : QString());
}

}  // namespace

NotesView::NotesView(QWidget* parent) : QPlainTextEdit(parent), m_thumb(new ScrollThumb(verticalScrollBar(), this)) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFont(Metrics::font(FontRole::body));
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    const int side = Metrics::px(margin);
    const int above = Metrics::px(verticalMargin);
    setViewportMargins(side, above, side, above);
    viewport()->setAutoFillBackground(false);
    const auto update = [this] {
        m_thumb->setVisible(m_thumb->isNeeded());
        m_thumb->update();
    };
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, update);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, update);
}

void NotesView::setNotes(const std::string& text) {
    setPlainText(readable(text));
}

int NotesView::wantedHeight(int width, int most) const {
    // A view that is exactly as high as its text scrolls by a pixel.
    const int around = 2 * Metrics::px(verticalMargin) + 2;
    const int line = fontMetrics().lineSpacing();
    const int room = width - 2 * Metrics::px(margin);
    int height = around;
    for (const QString& paragraph : toPlainText().split(QLatin1Char('\n'))) {
        height += static_cast<int>(Paint::wrapped(FontRole::body, paragraph, room).size()) * line;
        if (height > most) {
            // Cut in the middle of a line, so that it is visible that the text goes on.
            const int lines = (most - Metrics::px(verticalMargin)) / line;
            return Metrics::px(verticalMargin) + lines * line - line / 2;
        }
    }
    return height;
}

bool NotesView::event(QEvent* event) {
    if (event->type() == QEvent::Paint) {
        QPainter painter(this);
        Paint::card(painter, rect());
        return true;
    }
    return QPlainTextEdit::event(event);
}

void NotesView::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    const int breadth = ScrollThumb::breadth();
    m_thumb->setGeometry(Mirror::shown(*this, QRect(width() - breadth - 1, 4, breadth, height() - 8)));
}

void NotesView::keyPressEvent(QKeyEvent* event) {
    // Without a cursor to move, arrows and pages scroll.
    QScrollBar& bar = *verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_Up:
            bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
            break;
        case Qt::Key_Down:
            bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
            break;
        case Qt::Key_Home:
            bar.triggerAction(QAbstractSlider::SliderToMinimum);
            break;
        case Qt::Key_End:
            bar.triggerAction(QAbstractSlider::SliderToMaximum);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
            event->ignore();
            break;
        default:
            QPlainTextEdit::keyPressEvent(event);
    }
}

void NotesView::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    if (FocusRing::isDue(event->reason())) {
        constexpr int radius = 12;
        FocusRing::follow(*this, rect(), radius);
    }
}

void NotesView::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    FocusRing::leave(*this);
}

}  // namespace kestrune
