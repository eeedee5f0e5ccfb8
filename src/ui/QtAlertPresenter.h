#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "platform/AlertPresenter.h"

namespace kestrune {

/// Shows alerts as window-modal dialogs of our own look. Main thread.
class QtAlertPresenter final : public AlertPresenter {
public:
    /// parent answers the window that an alert belongs to, or null when none is visible.
    explicit QtAlertPresenter(std::function<QWidget*()> parent);

    [[nodiscard]] std::size_t present(const Alert& alert) override;

private:
    std::function<QWidget*()> m_parent;
};

}  // namespace kestrune
