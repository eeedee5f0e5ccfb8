#pragma once

#include "ui/MessageTone.h"
#include "ui/Painted.h"

namespace kestrune {

class Button;
class TextLabel;

/// A sentence on a tinted ground with the sign of its tone, and a close mark where it may be put away.
class Strip final : public Painted {
    Q_OBJECT

public:
    explicit Strip(QWidget* parent = nullptr);

    /// Shows sentence, without changing anything when it is shown already.
    void setSentence(Tone tone, const QString& sentence);

    [[nodiscard]] QString sentence() const;

    [[nodiscard]] Tone tone() const { return m_tone; }

    void setClosable(bool closable);

    /// Reads the sentence out to screen readers.
    void announce();

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::AlertMessage; }

Q_SIGNALS:
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Tone m_tone = Tone::info;
    TextLabel* m_label;
    Button* m_close;
};

}  // namespace kestrune
