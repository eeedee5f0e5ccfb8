#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QStringList>

#include "tests/ui/SeenPieces.h"
#include "ui/Button.h"
#include "ui/QtUpdatePresenter.h"

namespace kestrune {

/// The window about updates as the updater shows it.
class UpdateFixture : public ::testing::Test {
protected:
    [[nodiscard]] static UpdateItem item(const std::string& version = "2.2.0", const std::string& notes = "") {
        UpdateItem result;
        result.version = version;
        result.displayVersion = version;
        result.notes = notes;
        result.archiveBytes = 48'000'000;
        return result;
    }

    void ask(const UpdateItem& found = item()) {
        presenter.showUpdate(found, "2.1.0", [this](UpdateChoice choice) { answers.push_back(choice); });
        QApplication::processEvents();
    }

    void press(UpdateWindow::Answer answer) {
        ASSERT_NE(presenter.window(), nullptr);
        presenter.window()->button(answer).click();
    }

    [[nodiscard]] bool shows(const QString& name) const {
        return presenter.window() != nullptr && namedIn(*presenter.window(), name) != nullptr;
    }

    /// The labels of the buttons that are there, in the order of Answer.
    [[nodiscard]] QStringList buttons() const {
        QStringList labels;
        for (const auto answer :
             {UpdateWindow::Answer::primary, UpdateWindow::Answer::secondary, UpdateWindow::Answer::quiet}) {
            const Button& button = presenter.window()->button(answer);
            if (button.isVisible()) {
                labels.append(button.label());
            }
        }
        return labels;
    }

    int prepared = 0;
    std::vector<UpdateChoice> answers;
    QtUpdatePresenter presenter{[this] { ++prepared; }};
};

}  // namespace kestrune
