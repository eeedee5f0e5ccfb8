#pragma once

#include <cstdint>

#include "ui/Moving.h"

namespace kestrune {

/// A bar that fills as bytes arrive; while nobody knows how many there will be, a segment passes through it.
class DownloadBar final : public Moving {
    Q_OBJECT

public:
    explicit DownloadBar(QWidget* parent = nullptr);

    /// total 0 or less: not known. More bytes than total fill the bar.
    void setProgress(std::int64_t bytes, std::int64_t total);

    /// The filled part in percent; nothing while it is not known.
    [[nodiscard]] std::optional<int> percent() const { return m_percent; }

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }

    [[nodiscard]] QString accessibleValue() const override;
    [[nodiscard]] std::optional<Amount> accessibleAmount() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void nextFrame() override;

private:
    double m_share = 0;
    std::optional<int> m_percent;
};

}  // namespace kestrune
