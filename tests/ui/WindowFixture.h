#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/StoreFixture.h"
#include "tests/ui/SeenPieces.h"
#include "ui/WorkspaceWindow.h"

namespace kestrune {

constexpr std::int64_t gigabyte = 1'000'000'000;

/// The window over a store of fakes, looked at the way a screen reader looks at it.
class WindowFixture : public ::testing::Test {
protected:
    WorkspaceWindow& window() {
        if (!m_window) {
            m_window = std::make_unique<WorkspaceWindow>(
                fixture.store(),
                WindowMemory{[this] { return kept; }, [this](const std::vector<double>& frame) { kept = frame; }});
        }
        return *m_window;
    }

    void open(WorkspacePage page) {
        fixture.store().page.set(page);
        window().present();
        QApplication::processEvents();
    }

    /// The program ends; whether the window is open then is its own matter.
    void end() { m_window.reset(); }

    /// Every visible piece of the window that a screen reader meets.
    [[nodiscard]] std::vector<Seen> seen() { return seenIn(window()); }

    /// The visible piece with this accessible name, or null.
    [[nodiscard]] QWidget* named(const QString& name) { return namedIn(window(), name); }

    [[nodiscard]] bool shows(const QString& name) { return named(name) != nullptr; }

    void click(const QString& name) {
        QWidget* widget = named(name);
        ASSERT_NE(widget, nullptr) << name.toStdString();
        QTest::mouseClick(widget, Qt::LeftButton);
        QApplication::processEvents();
    }

    [[nodiscard]] bool isEnabled(const QString& name) {
        const QWidget* widget = named(name);
        return widget != nullptr && widget->isEnabled();
    }

    /// What the Tab key goes through, from the sidebar on until it is back there.
    [[nodiscard]] QStringList tabStops() {
        constexpr qsizetype most = 100;
        named(QStringLiteral("Pages"))->setFocus(Qt::TabFocusReason);
        const QWidget* start = QApplication::focusWidget();
        QStringList stops;
        do {
            stops.append(QApplication::focusWidget()->accessibleName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        } while (QApplication::focusWidget() != start && stops.size() < most);
        return stops;
    }

    StoreFixture fixture;
    std::optional<std::vector<double>> kept;

private:
    std::unique_ptr<WorkspaceWindow> m_window;
};

}  // namespace kestrune
