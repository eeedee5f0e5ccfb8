#pragma once

#include <QString>
#include <QWidget>

namespace kestrune {

class TextLabel;
class Toggle;

/// A switch across a panel, with a note under its label where it needs one. A click anywhere on it switches.
class SettingRow final : public QWidget {
    Q_OBJECT

public:
    explicit SettingRow(const QString& label, QWidget* parent = nullptr);

    void setNote(const QString& note);

    /// Shows what holds now; asked() is not emitted.
    void setOn(bool on);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user wants it on, or off. Whether it is so from now on, setOn() has to tell.
    void asked(bool on);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] int noteHeight(int width) const;
    void place();

    Toggle* m_toggle;
    TextLabel* m_note = nullptr;
};

}  // namespace kestrune
