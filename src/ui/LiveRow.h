#pragma once

#include <functional>

#include "ui/AppIcon.h"
#include "ui/ListRow.h"
#include "ui/UiText.h"
#include "workspace/RunningItem.h"

namespace kestrune {

/// What a row of a live list shows.
struct LiveRowState {
    RunningItem item;
    bool ended = false;  ///< gone since; nothing can be done with it any more
    bool isProtected = false;
    bool nameIsShared = false;  ///< other rows have this name too

    bool operator==(const LiveRowState&) const = default;
};

/// A row of a LiveRowList. It shows one process at a time, and another one when the list needs it elsewhere. It takes
/// the keyboard focus itself where none of its controls can.
class LiveRow : public ListRow {
    Q_OBJECT

public:
    explicit LiveRow(QWidget* parent = nullptr);

    /// What tells where the picture of a row's application is; asked when the row is drawn.
    using PictureSource = std::function<AppIcon::Picture(const RunningItem&)>;

    void setPictureSource(PictureSource source);

    void setState(const LiveRowState& state);

    [[nodiscard]] const LiveRowState& state() const { return m_state; }

    /// The process's name for the screen.
    [[nodiscard]] QString name() const;

    /// The name as the row's controls are spoken: with the process identifier where the name alone is not enough.
    [[nodiscard]] QString spokenName() const;

    /// A menu of this row is open.
    [[nodiscard]] virtual bool isMenuOpen() const { return false; }

Q_SIGNALS:
    void menuClosed();

protected:
    /// Enables control or disables it; the row takes its focus over then, which would go to another process's row.
    void setUsable(QWidget& control, bool usable);

    /// Brings the row's controls and what it is read as up to date.
    virtual void stateChanged() = 0;

    /// What an ended process's place says about it.
    [[nodiscard]] virtual QString endedText() const { return translated("Ended"); }

    /// Draws the row over its ground, within its focus ring.
    virtual void paintContent(QPainter& painter) = 0;

    /// The picture of the row's application.
    [[nodiscard]] AppIcon::Picture picture() const;

    void paintRow(QPainter& painter) final;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    PictureSource m_pictureSource;
    LiveRowState m_state;
    bool m_ringed = false;
};

}  // namespace kestrune
