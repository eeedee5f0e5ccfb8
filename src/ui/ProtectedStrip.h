#pragma once

#include <QString>
#include <set>
#include <string>
#include <vector>

#include "ui/Painted.h"

namespace kestrune {

class Button;

/// The names that are never ended, each with the way to take its protection away: beside the title while they fit on
/// one line, else on lines below it.
class ProtectedStrip final : public Painted {
    Q_OBJECT

public:
    explicit ProtectedStrip(QWidget* parent = nullptr);

    void setNames(const std::set<std::string>& names);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }

Q_SIGNALS:
    void removalWanted(const std::string& name);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// A name and its button, and where they are.
    struct Entry {
        std::string name;
        Button* remove;
        QRect text;
        QRect button;
        bool parted = false;  ///< a hairline stands before it
    };

    /// Lays entries out for this width, and answers the height they take.
    int lay(std::vector<Entry>& entries, int width) const;
    void arrange();

    std::vector<Entry> m_entries;
};

}  // namespace kestrune
