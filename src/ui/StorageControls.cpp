#include "ui/StorageControls.h"

#include <algorithm>

#include "ui/Button.h"
#include "ui/Mirror.h"
#include "ui/Picker.h"
#include "ui/SearchField.h"
#include "ui/TextLabel.h"
#include "ui/Toggle.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int gap = 8;

QStringList categories() {
    QStringList result{translated("All categories")};
    for (const CleanCategory category : allCleanCategories) {
        result.append(translated(rawValue(category)));
    }
    return result;
}

struct Piece {
    QWidget* widget;
    int width;
    int spaceBefore;
};

int widthOf(const QList<Piece>& pieces) {
    int width = 0;
    for (const Piece& piece : pieces) {
        width += piece.spaceBefore + piece.width;
    }
    return width;
}

void place(const QList<Piece>& pieces, int left, int top, int height) {
    for (const Piece& piece : pieces) {
        const int own = piece.widget->sizeHint().height();
        left += piece.spaceBefore;
        const QRect box(left, top + (height - own) / 2, piece.width, own);
        piece.widget->setGeometry(Mirror::shown(*piece.widget->parentWidget(), box));
        left += piece.width;
    }
}

// One line with a group at either end, or two where both do not fit side by side. Answers the height taken.
int placeLine(const QList<Piece>& leading, const QList<Piece>& trailing, int width, int top, int height) {
    place(leading, 0, top, height);
    if (widthOf(leading) + 2 * gap + widthOf(trailing) <= width) {
        place(trailing, width - widthOf(trailing), top, height);
        return height;
    }
    place(trailing, 0, top + height + gap, height);
    return 2 * height + gap;
}

}  // namespace

StorageControls::StorageControls(QWidget* parent)
    : QWidget(parent),
      m_label(new TextLabel(FontRole::body, Colour::text2, this)),
      m_category(new Picker(translated("Category"), categories(), this)),
      m_search(new SearchField(translated("Find a cache or model folder"), this)),
      m_excluded(new Toggle(translated("Show excluded locations"), this)),
      m_select(new Button(Button::Kind::secondary, translated("Select build caches"), this)),
      m_clear(new Button(Button::Kind::quiet, translated("Clear selection"), this)),
      m_save(new Button(Button::Kind::quiet, translated("Save for Next Time"), this)),
      m_restore(new Button(Button::Kind::quiet, translated("Use Saved Folders"), this)) {
    m_label->setText(translated("Category"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(m_category, &Picker::chosen, this, [this] {
        arrange();
        Q_EMIT filterChanged();
    });
    connect(m_search, &SearchField::textChanged, this, &StorageControls::filterChanged);
    connect(m_excluded, &Toggle::toggled, this, &StorageControls::filterChanged);
    connect(m_select, &Button::clicked, this, &StorageControls::selectWanted);
    connect(m_clear, &Button::clicked, this, &StorageControls::clearWanted);
    connect(m_save, &Button::clicked, this, &StorageControls::saveWanted);
    connect(m_restore, &Button::clicked, this, &StorageControls::restoreWanted);
}

StorageFilter StorageControls::filter() const {
    StorageFilter result;
    if (m_category->choice() > 0) {
        result.category = allCleanCategories.at(static_cast<std::size_t>(m_category->choice() - 1));
    }
    result.search = m_search->text().trimmed().toStdString();
    result.showExcluded = m_excluded->isChecked();
    return result;
}

void StorageControls::setState(const StorageControlsState& state) {
    m_category->setEnabled(state.filter);
    m_search->setEnabled(state.filter);
    m_select->setEnabled(state.selectBuildCaches);
    m_clear->setEnabled(state.clearSelection);
    m_save->setEnabled(state.save);
    m_restore->setEnabled(state.restore);
}

void StorageControls::setNarrow(bool narrow) {
    m_narrow = narrow;
    arrange();
}

QWidget* StorageControls::lastFocusStop() const {
    return m_restore;
}

void StorageControls::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void StorageControls::arrange() {
    const auto piece = [](QWidget* widget, int spaceBefore) {
        return Piece{widget, widget->sizeHint().width(), spaceBefore};
    };
    m_label->setVisible(!m_narrow);
    QList<Piece> filters;
    if (!m_narrow) {
        filters.append(piece(m_label, 0));
    }
    filters.append(piece(m_category, m_narrow ? 0 : 10));
    filters.append(piece(m_search, m_narrow ? gap : 2 * gap));
    const QList<Piece> toggle{piece(m_excluded, 0)};
    // The search field gives way before the toggle goes to a line of its own.
    const int over = widthOf(filters) + 2 * gap + widthOf(toggle) - width();
    const int spare = m_search->sizeHint().width() - m_search->minimumSizeHint().width();
    if (over > 0) {
        filters.last().width -= std::min(over, spare);
    }
    const int line = m_select->sizeHint().height();
    int bottom = placeLine(filters, toggle, width(), 0, line) + gap;
    bottom += placeLine({piece(m_select, 0), piece(m_clear, gap)}, {piece(m_save, 0), piece(m_restore, gap)}, width(),
                        bottom, line);
    setFixedHeight(bottom);
}

}  // namespace kestrune
