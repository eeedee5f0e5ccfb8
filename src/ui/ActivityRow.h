#pragma once

#include "ui/ListRow.h"
#include "workspace/ActivityEntry.h"

namespace kestrune {

class Button;

/// One entry of the activity log.
class ActivityRow final : public ListRow {
    Q_OBJECT

public:
    /// nameInButtons is what the names of the entry's buttons end with, for screen readers.
    ActivityRow(const ActivityEntry& entry, const QString& day, QString time, const QString& nameInButtons,
                QWidget* parent = nullptr);

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

    /// Names what changes while the entry stays: its day, and what its buttons are called.
    void setNames(const QString& day, const QString& nameInButtons);

Q_SIGNALS:
    void putBackWanted();
    void showInTrashWanted();

protected:
    void paintRow(QPainter& painter) override;
    void hoverChanged(bool hovered) override;
    [[nodiscard]] QString toolTipAt(const QPoint& place) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] int textLeft() const;
    [[nodiscard]] int buttonsWidth() const;

    /// Whether the buttons lie under the text, which would have too little room beside them.
    [[nodiscard]] bool areButtonsBelow(int width) const;
    [[nodiscard]] int textRight(int width) const;
    [[nodiscard]] int textHeight(int width) const;
    void placeButtons();
    [[nodiscard]] QStringList detailLines(int width) const;

    QString m_title;
    QString m_detail;
    QString m_time;
    bool m_failed;
    Button* m_putBack = nullptr;  // both or neither
    Button* m_show = nullptr;
};

}  // namespace kestrune
