#pragma once

#include "ui/ListRow.h"
#include "workspace/ActivityEntry.h"

namespace kestrune {

class Button;

/// One entry of the activity log.
class ActivityRow final : public ListRow {
    Q_OBJECT

public:
    /// buttonName is what a screen reader calls the entry's button.
    ActivityRow(const ActivityEntry& entry, const QString& day, QString time, const QString& buttonName,
                QWidget* parent = nullptr);

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

    /// Names what changes while the entry stays: its day, and what its button is called.
    void setNames(const QString& day, const QString& buttonName);

Q_SIGNALS:
    void showInTrashWanted();

protected:
    void paintRow(QPainter& painter) override;
    void hoverChanged(bool hovered) override;
    [[nodiscard]] QString toolTipAt(const QPoint& place) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] int textLeft() const;
    [[nodiscard]] int textRight(int width) const;
    [[nodiscard]] QStringList detailLines(int width) const;

    QString m_title;
    QString m_detail;
    QString m_time;
    bool m_failed;
    Button* m_show = nullptr;
};

}  // namespace kestrune
