#pragma once

#include <QString>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "ui/Painted.h"

namespace kestrune {

class Button;

/// The names that are never ended, each with the way to take its protection away: beside the title while they fit on
/// one line, else on lines below it. Of more than 200 names the first are shown, and how many more there are.
class ProtectedStrip final : public Painted {
    Q_OBJECT

public:
    explicit ProtectedStrip(QWidget* parent = nullptr);

    void setNames(const std::set<std::string>& all);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }

Q_SIGNALS:
    void removalWanted(const std::string& name);

    /// The control with the keyboard focus goes away, and no other one is left.
    void focusLeft();

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
    [[nodiscard]] QString moreText() const;
    [[nodiscard]] Button* makeButton(const std::string& name);

    /// Takes the button of what is no longer named away; its focus goes to the one that stands there now.
    void retire(std::size_t place, Button& button, const std::vector<Entry>& now);

    std::vector<Entry> m_entries;
    std::size_t m_more = 0;  ///< names beyond these
};

}  // namespace kestrune
