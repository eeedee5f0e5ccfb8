#pragma once

#include <functional>

#include "ui/LiveRow.h"
#include "ui/Metrics.h"

namespace kestrune {

class Button;

/// A process that listens on ports, with the way to stop it.
class PortRow final : public LiveRow {
    Q_OBJECT

public:
    explicit PortRow(QWidget* parent = nullptr);

    /// What tells the text that the user looks for; asked when the row is drawn.
    using SearchSource = std::function<QString()>;

    void setSearchSource(SearchSource source);

    /// Height of every such row that is width wide.
    [[nodiscard]] static int heightAt(int width);

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

Q_SIGNALS:
    /// item is the process that the row showed when the user decided.
    void stopWanted(const kestrune::RunningItem& item);

protected:
    void stateChanged() override;
    [[nodiscard]] QString endedText() const override;
    void paintContent(QPainter& painter) override;
    [[nodiscard]] QString toolTipAt(const QPoint& at) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Columns;

    [[nodiscard]] static Columns columns(int width);
    [[nodiscard]] QString ports() const;

    /// The ports as they are drawn on room pixels: those that the user looks for first, where they would be cut off.
    [[nodiscard]] QString portsWithin(int room, FontRole role) const;
    [[nodiscard]] QString detail(const QString& ports) const;
    void arrangeControls();

    Button* m_stop;
    SearchSource m_search;
};

}  // namespace kestrune
