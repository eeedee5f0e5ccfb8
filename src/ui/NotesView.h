#pragma once

#include <QPlainTextEdit>
#include <string>

namespace kestrune {

class ScrollThumb;

/// Foreign text to be read, on a card of its own: plain, whatever it looks like, with its own line breaks. It scrolls
/// where it is long, and can be selected and copied.
class NotesView final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit NotesView(QWidget* parent = nullptr);

    /// Every character of text shows, and of a text without end only its start.
    void setNotes(const std::string& text);

    /// Height of text on so many pixels of width, up to most.
    [[nodiscard]] int wantedHeight(int width, int most) const;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    ScrollThumb* m_thumb;
};

}  // namespace kestrune
