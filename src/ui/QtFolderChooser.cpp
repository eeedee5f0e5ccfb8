#include "ui/QtFolderChooser.h"

#include <QFile>
#include <QFileDialog>
#include <utility>

namespace kestrune {

QtFolderChooser::QtFolderChooser(std::function<QWidget*()> parent) : m_parent(std::move(parent)) {
}

std::optional<std::string> QtFolderChooser::chooseFolder(const std::string& message, const std::string& startFolder) {
    const QString chosen = QFileDialog::getExistingDirectory(
        m_parent ? m_parent() : nullptr, QString::fromStdString(message), QFile::decodeName(startFolder.c_str()));
    return chosen.isEmpty() ? std::nullopt : std::optional(QFile::encodeName(chosen).toStdString());
}

}  // namespace kestrune
