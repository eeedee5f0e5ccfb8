#pragma once

#include "ui/Painted.h"

namespace kestrune {

class Button;
class ProgressStrip;

/// A scan that runs: how many entries it looked at, how much they take, which folder it reads, and the way to stop it.
/// Its figures have columns of their own, so that nothing moves while they grow.
class ExplorerProgressStrip final : public Painted {
    Q_OBJECT

public:
    explicit ExplorerProgressStrip(QWidget* parent = nullptr);

    void setProgress(const QString& inspected, const QString& found, const QString& folder);

    [[nodiscard]] Button* stopButton() const { return m_stop; }

    /// The figures and the folder; not announced, for they change all the time.
    [[nodiscard]] QString accessibleValue() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int paintFigure(QPainter& painter, const QRect& box, const QString& figure, const QString& widest) const;

    QString m_inspected;
    QString m_found;
    QString m_folder;
    ProgressStrip* m_running;
    Button* m_stop;
};

}  // namespace kestrune
