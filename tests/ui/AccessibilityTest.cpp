#include <gtest/gtest.h>

#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QTest>
#include <set>

#include "tests/ui/EverySight.h"
#include "tests/ui/SeenPieces.h"
#include "ui/Button.h"
#include "ui/DownloadBar.h"
#include "ui/ListRow.h"
#include "ui/NavigationRow.h"
#include "ui/ProgressStrip.h"
#include "ui/Toggle.h"

namespace kestrune {

namespace {

std::vector<QAccessibleInterface*> piecesOf(QAccessibleInterface* piece) {
    std::vector<QAccessibleInterface*> result;
    if (piece == nullptr || piece->state().invisible) {
        return result;
    }
    result.push_back(piece);
    for (int index = 0; index < piece->childCount(); ++index) {
        const auto below = piecesOf(piece->child(index));
        result.insert(result.end(), below.begin(), below.end());
    }
    return result;
}

std::vector<QAccessibleInterface*> piecesOf(QWidget& window) {
    return piecesOf(QAccessible::queryAccessibleInterface(&window));
}

QString nameOf(QAccessibleInterface* piece) {
    return piece->text(QAccessible::Name);
}

bool isPressable(QAccessibleInterface* piece) {
    QAccessibleActionInterface* actions = piece->actionInterface();
    return actions != nullptr && (actions->actionNames().contains(QAccessibleActionInterface::pressAction()) ||
                                  actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
}

std::string describe(QAccessibleInterface* piece) {
    const QObject* object = piece->object();
    return std::string(object == nullptr ? "part" : object->metaObject()->className()) + " “" +
           nameOf(piece).toStdString() + "”";
}

/// What the Tab key goes through in window, once round.
std::vector<QWidget*> tabStops(QWidget& window) {
    constexpr std::size_t most = 200;
    QWidget* start = window.focusWidget();
    if (start == nullptr) {
        QTest::keyClick(&window, Qt::Key_Tab);
        start = window.focusWidget();
    }
    std::vector<QWidget*> stops;
    while (window.focusWidget() != nullptr && stops.size() < most) {
        stops.push_back(window.focusWidget());
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        if (window.focusWidget() == start) {
            break;
        }
    }
    return stops;
}

std::optional<QAccessible::Role> roleOf(const QWidget& widget) {
    if (qobject_cast<const QCheckBox*>(&widget) != nullptr) {
        return QAccessible::CheckBox;
    }
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr) {
        return QAccessible::EditableText;
    }
    if (qobject_cast<const ProgressStrip*>(&widget) != nullptr ||
        qobject_cast<const DownloadBar*>(&widget) != nullptr) {
        return QAccessible::ProgressBar;
    }
    if (qobject_cast<const ListRow*>(&widget) != nullptr && qobject_cast<const NavigationRow*>(&widget) == nullptr) {
        return QAccessible::ListItem;
    }
    return std::nullopt;
}

bool isButton(QAccessible::Role role) {
    return role == QAccessible::Button || role == QAccessible::Link || role == QAccessible::ButtonMenu ||
           role == QAccessible::ComboBox;
}

}  // namespace

TEST(Accessibility, everythingThatCanBeReachedOrPressedHasAName) {
    EverySight::visit([](const std::string& sight, QWidget& window) {
        for (QAccessibleInterface* piece : piecesOf(window)) {
            const auto* widget = qobject_cast<QWidget*>(piece->object());
            const bool isReached = widget != nullptr && widget->focusPolicy() != Qt::NoFocus;
            if (isReached || isPressable(piece)) {
                EXPECT_FALSE(nameOf(piece).trimmed().isEmpty()) << sight << ": " << describe(piece);
            }
        }
    });
}

TEST(Accessibility, everyPieceSaysWhatItIs) {
    EverySight::visit([](const std::string& sight, QWidget& window) {
        for (QAccessibleInterface* piece : piecesOf(window)) {
            const auto* widget = qobject_cast<QWidget*>(piece->object());
            if (widget == nullptr) {
                continue;
            }
            if (const auto role = roleOf(*widget)) {
                EXPECT_EQ(piece->role(), *role) << sight << ": " << describe(piece);
            } else if (qobject_cast<const Button*>(widget) != nullptr) {
                EXPECT_TRUE(isButton(piece->role())) << sight << ": " << describe(piece);
            }
        }
    });
}

TEST(Accessibility, whatIsSwitchedAndWhatRunsTellsItsState) {
    EverySight::visit([](const std::string& sight, QWidget& window) {
        for (QAccessibleInterface* piece : piecesOf(window)) {
            const auto* box = qobject_cast<QCheckBox*>(piece->object());
            if (box != nullptr) {
                EXPECT_TRUE(piece->state().checkable) << sight << ": " << describe(piece);
                EXPECT_EQ(static_cast<bool>(piece->state().checked), box->isChecked())
                    << sight << ": " << describe(piece);
            }
            QAccessibleValueInterface* value = piece->valueInterface();
            if (value != nullptr && piece->role() == QAccessible::ProgressBar) {
                EXPECT_GE(value->currentValue().toDouble(), value->minimumValue().toDouble()) << describe(piece);
                EXPECT_LE(value->currentValue().toDouble(), value->maximumValue().toDouble()) << describe(piece);
            }
        }
    });
}

TEST(Accessibility, nothingThatCanBeReachedIsNamedLikeAnotherOne) {
    EverySight::visit([](const std::string& sight, QWidget& window) {
        std::set<QString> names;
        for (QAccessibleInterface* piece : piecesOf(window)) {
            const auto* widget = qobject_cast<QWidget*>(piece->object());
            if (widget != nullptr && widget->focusPolicy() != Qt::NoFocus && widget->isEnabled()) {
                EXPECT_TRUE(names.insert(nameOf(piece)).second) << sight << ": " << describe(piece);
            }
        }
    });
}

TEST(Accessibility, everythingThatCanBePressedIsReachedByTheTabKey) {
    EverySight::visit([](const std::string& sight, QWidget& window) {
        const std::vector<QWidget*> stops = tabStops(window);
        const std::set<QWidget*> reached(stops.begin(), stops.end());
        EXPECT_EQ(reached.size(), stops.size()) << sight;
        for (QAccessibleInterface* piece : piecesOf(window)) {
            auto* widget = qobject_cast<QWidget*>(piece->object());
            if (widget != nullptr && widget->isEnabled() && isPressable(piece)) {
                EXPECT_EQ(reached.count(widget), 1U) << sight << ": " << describe(piece);
            }
        }
    });
}

TEST(Accessibility, focusShowsWhereverTheTabKeyLeads) {
    EverySight::visit([](const std::string& sight, QWidget& window) {
        for (QWidget* stop : tabStops(window)) {
            stop->setFocus(Qt::TabFocusReason);
            QApplication::processEvents();
            const QImage focused = window.grab().toImage();
            stop->clearFocus();
            QApplication::processEvents();
            EXPECT_NE(focused, window.grab().toImage())
                << sight << ": " << describe(QAccessible::queryAccessibleInterface(stop));
        }
    });
}

}  // namespace kestrune
