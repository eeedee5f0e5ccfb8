#include "ui/QtAlertPresenter.h"

#include <utility>

#include "ui/AlertDialog.h"

namespace kestrune {

QtAlertPresenter::QtAlertPresenter(std::function<QWidget*()> parent) : m_parent(std::move(parent)) {
}

std::size_t QtAlertPresenter::present(const Alert& alert) {
    QWidget* parent = m_parent ? m_parent() : nullptr;
    const std::size_t last = alert.buttons.empty() ? 0 : alert.buttons.size() - 1;
    // The window may go away while the question is open, and takes the dialog with it.
    const QPointer<AlertDialog> dialog = new AlertDialog(alert, parent);
    dialog->setWindowModality(parent == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    dialog->exec();
    if (dialog.isNull()) {
        return last;
    }
    const std::size_t answer = dialog->answer();
    dialog->deleteLater();
    return answer;
}

}  // namespace kestrune
