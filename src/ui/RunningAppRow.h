#pragma once

#include <QMenu>
#include <QPointer>

#include "ui/ProcessRow.h"

namespace kestrune {

class Button;
class ProtectionToggle;

/// A process of the Running Apps page, with the ways to protect it and to end it.
class RunningAppRow final : public ProcessRow {
    Q_OBJECT

public:
    explicit RunningAppRow(QWidget* parent = nullptr);

    /// Height of every such row that is width wide.
    [[nodiscard]] static int heightAt(int width);

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;
    [[nodiscard]] bool isMenuOpen() const override;

Q_SIGNALS:
    /// item is the process that the row showed when the user decided.
    void protectionWanted(const kestrune::RunningItem& item);
    void quitWanted(const kestrune::RunningItem& item, bool force);

protected:
    void stateChanged() override;
    void paintContent(QPainter& painter) override;
    void hoverChanged(bool hovered) override;
    [[nodiscard]] QString detail() const override;
    [[nodiscard]] int memoryRight() const override;
    [[nodiscard]] int mainHeight() const override;
    [[nodiscard]] QStringList furtherFigures() const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] static bool controlsBelow(int width);
    [[nodiscard]] static int quitWidth();
    [[nodiscard]] static int controlsWidth();
    [[nodiscard]] int figuresRight() const;
    void arrangeControls();
    void openMenu();

    ProtectionToggle* m_protection;
    Button* m_quit;
    Button* m_more;
    QPointer<QMenu> m_menu;
};

}  // namespace kestrune
