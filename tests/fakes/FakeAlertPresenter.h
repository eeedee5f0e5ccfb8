#pragma once

#include <functional>
#include <vector>

#include "platform/AlertPresenter.h"

namespace kestrune {

/// Notes each alert and presses the button the test chose.
class FakeAlertPresenter final : public AlertPresenter {
public:
    [[nodiscard]] std::size_t present(const Alert& alert) override {
        alerts.push_back(alert);
        if (whileOpen) {
            whileOpen();
        }
        return answer;
    }

    std::size_t answer = 0;           ///< index of the button
    std::function<void()> whileOpen;  ///< what happens before the user answers
    std::vector<Alert> alerts;
};

}  // namespace kestrune
