#pragma once

#include <QList>

#include "storage/CleanTarget.h"
#include "ui/Chip.h"
#include "ui/ListRow.h"

namespace kestrune {

class Button;
class CheckBox;

/// What a row of the Storage page shows.
struct StorageRowState {
    CleanTarget target;
    QString path;     ///< with the home folder as "~"
    QString failure;  ///< why the last cleanup did not move it; empty when it did not fail
    bool selected = false;
    bool excluded = false;
    bool locked = false;      ///< a cleanup runs: nothing can be chosen or excluded
    double share = 0;         ///< of the largest row, 0 to 1
    int lastButtonWidth = 0;  ///< of the widest last button in the list, so that columns line up

    bool operator==(const StorageRowState&) const = default;
};

class StorageRow final : public ListRow {
    Q_OBJECT

public:
    explicit StorageRow(const CleanTarget& target, QWidget* parent = nullptr);

    void setState(const StorageRowState& state);

    [[nodiscard]] const StorageRowState& state() const { return m_state; }

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

    /// Width that a last button needs.
    [[nodiscard]] static int lastButtonWidth(bool anyExcluded);

Q_SIGNALS:
    void selectionWanted(bool on);
    void revealWanted();
    void exclusionWanted();

protected:
    void paintRow(QPainter& painter) override;
    void hoverChanged(bool hovered) override;
    void clicked() override;
    [[nodiscard]] QString toolTipAt(const QPoint& at) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Columns;

    [[nodiscard]] Columns columns(int width) const;
    [[nodiscard]] QList<Chip> chips() const;
    void arrangeControls();
    void speak();

    StorageRowState m_state;
    CheckBox* m_check;
    Button* m_reveal;
    Button* m_exclude;
};

}  // namespace kestrune
