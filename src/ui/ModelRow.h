#pragma once

#include "storage/CleanTarget.h"
#include "ui/ListRow.h"

namespace kestrune {

class Button;

/// What a row of model folders shows.
struct ModelRowState {
    CleanTarget target;
    QString path;      ///< with the home folder as "~"
    double share = 0;  ///< of the largest row, 0 to 1

    bool operator==(const ModelRowState&) const = default;
};

/// A model folder: its name, where it lies, how much room it takes, and the way to it in the file manager.
class ModelRow final : public ListRow {
    Q_OBJECT

public:
    explicit ModelRow(const CleanTarget& target, QWidget* parent = nullptr);

    void setState(const ModelRowState& state);

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

Q_SIGNALS:
    void revealWanted();

protected:
    void paintRow(QPainter& painter) override;
    void hoverChanged(bool hovered) override;
    [[nodiscard]] QString toolTipAt(const QPoint& at) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Columns;

    [[nodiscard]] Columns columns() const;

    ModelRowState m_state;
    Button* m_reveal;
};

}  // namespace kestrune
