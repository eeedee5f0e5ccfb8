#pragma once

#include "ui/Moving.h"

namespace kestrune {

/// What runs now: a turning ring, a sentence and how far it is. It moves only while it is on screen.
class ProgressStrip final : public Moving {
    Q_OBJECT

public:
    explicit ProgressStrip(QWidget* parent = nullptr);

    /// total 0: how much there is to do is not known.
    void setProgress(const QString& sentence, int done, int total);

    /// Shows "3 of 20" beside the bar.
    void setCounted(bool counted);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }

    [[nodiscard]] QString accessibleValue() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void nextFrame() override;

private:
    [[nodiscard]] QRect barBox() const;
    [[nodiscard]] QRect ringBox() const;
    void paintRing(QPainter& painter) const;
    void paintBar(QPainter& painter) const;

    QString m_sentence;
    int m_done = 0;
    int m_total = 0;
    bool m_counted = false;
};

}  // namespace kestrune
