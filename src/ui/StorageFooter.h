#pragma once

#include "ui/Painted.h"

namespace kestrune {

class Button;

/// The bar under the storage list: what is selected, where it goes, and the one button that acts.
class StorageFooter final : public Painted {
    Q_OBJECT

public:
    explicit StorageFooter(QWidget* parent = nullptr);

    void setSelection(std::size_t count, const QString& size);

    /// cleaning puts the stop button in the place of the other.
    void setAction(bool cleaning, bool enabled);

    void setSideMargin(int margin);

    [[nodiscard]] QList<QWidget*> focusStops() const;

Q_SIGNALS:
    void cleanWanted();
    void stopWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The sentence about the consequence wraps where large text leaves little room; it is never cut.
    [[nodiscard]] int safetyLeft() const;
    [[nodiscard]] int safetyRoom() const;
    [[nodiscard]] int safetyHeight() const;
    void arrange();

    QString m_count;
    Button* m_clean;
    Button* m_stop;
};

}  // namespace kestrune
