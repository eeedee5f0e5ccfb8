#include "ui/QtFolderChooser.h"

#include <QFile>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>
#include <filesystem>
#include <utility>

#include "base/Text.h"
#include "ui/Metrics.h"
#include "ui/Strip.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int panelWidth = 760;
constexpr int panelHeight = 520;
constexpr int frameHeight = 40;  // what a desktop puts around a dialog, at most
constexpr int margin = 9;

/// Whether panel is made of Qt's own widgets; the desktop's has none of them.
bool isOurs(const QFileDialog& panel) {
    return panel.layout() != nullptr;
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

/// folder, or the nearest one above it that exists and that text can name.
QString startIn(const std::string& folder) {
    std::filesystem::path path(folder);
    while (path.has_relative_path() && !(isValidUtf8(path.native()) && isFolder(path.native()))) {
        path = path.parent_path();
    }
    return QFile::decodeName(path.c_str());
}

/// A strip above everything else in the panel: the title bar cuts long sentences.
void addMessage(QFileDialog& panel, const QString& message) {
    auto* head = new QWidget(&panel);
    auto* layout = new QVBoxLayout(head);
    layout->setContentsMargins(margin, margin, margin, 0);
    auto* strip = new Strip(head);
    strip->setClosable(false);
    strip->setSentence(Tone::info, message);
    layout->addWidget(strip);
    panel.layout()->setMenuBar(head);
    panel.setWindowTitle(translated("Choose folder"));
    panel.setAccessibleDescription(message);
}

/// Takes away what no other window here has: a choice of one kind of file, and pictures on buttons.
void simplify(const QFileDialog& panel) {
    for (const QString& name : {QStringLiteral("fileTypeLabel"), QStringLiteral("fileTypeCombo")}) {
        if (auto* part = panel.findChild<QWidget*>(name)) {
            part->hide();
        }
    }
    for (QPushButton* button : panel.findChildren<QPushButton*>()) {
        button->setIcon(QIcon());
    }
}

void prepare(QFileDialog& panel, const QString& message, const std::string& startFolder) {
    panel.setFileMode(QFileDialog::Directory);
    panel.setOption(QFileDialog::ShowDirsOnly);
    // Qt's own panel can delete and rename; what looks at files must not come with that.
    panel.setOption(QFileDialog::ReadOnly);
    // What is answered is what the person saw, not where it leads.
    panel.setOption(QFileDialog::DontResolveSymlinks);
    panel.setOption(QFileDialog::DontUseCustomDirectoryIcons);
    panel.setFilter(QDir::AllDirs | QDir::Hidden | QDir::NoDotAndDotDot);
    panel.setDirectory(startIn(startFolder));
    if (isOurs(panel)) {
        addMessage(panel, message);
        simplify(panel);
        const QSize room = panel.screen()->availableSize() - QSize(0, Metrics::px(frameHeight));
        panel.setMaximumSize(room);
        panel.resize(QSize(Metrics::px(panelWidth), Metrics::px(panelHeight)).boundedTo(room));
    }
}

/// Whether Qt's own panel answers what its name field says. It takes quotation marks there for the ends of names, so
/// that it would answer b for a folder called a"b"c.
bool saysWhatItAnswers(const QFileDialog& panel, const QString& path) {
    const auto* field = panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const QString typed = field == nullptr ? QString() : field->text();
    return !typed.contains(QLatin1Char('"')) || path.endsWith(QLatin1Char('/') + typed) || path == typed;
}

/// The bytes of the folder that panel was left with; nothing where they are not certain.
std::optional<std::string> chosenIn(const QFileDialog& panel) {
    const QList<QUrl> chosen = panel.selectedUrls();
    if (chosen.size() != 1 || !chosen.front().isLocalFile() || !chosen.front().host().isEmpty()) {
        return std::nullopt;
    }
    // Encoded, an address still holds the bytes that no text can.
    const QByteArray encoded = chosen.front().path(QUrl::FullyEncoded).toLatin1();
    std::string path = std::filesystem::path(QByteArray::fromPercentEncoding(encoded).toStdString()).lexically_normal();
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    // A desktop's panel puts this sign for every byte that it could not express; Qt's own leaves such folders out.
    const bool isLossy = !isOurs(panel) && path.find("\xEF\xBF\xBD") != std::string::npos;
    const bool isCertain = !isLossy && saysWhatItAnswers(panel, QFile::decodeName(path.c_str()));
    return isCertain && isFolder(path) ? std::optional(std::move(path)) : std::nullopt;
}

}  // namespace

QtFolderChooser::QtFolderChooser(std::function<QWidget*()> parent,
                                 std::function<void(const std::string& message)> opened)
    : m_parent(std::move(parent)), m_opened(std::move(opened)) {
}

std::optional<std::string> QtFolderChooser::chooseFolder(const std::string& message, const std::string& startFolder) {
    if (m_open) {
        m_open->raise();
        m_open->activateWindow();
        return std::nullopt;
    }
    QWidget* parent = m_parent ? m_parent() : nullptr;
    const QString sentence = QString::fromStdString(message);
    // The window may go away while the panel is open, and takes the panel with it.
    const QPointer<QFileDialog> panel = new QFileDialog(parent, sentence);
    m_open = panel;
    prepare(*panel, sentence, startFolder);
    // Behind its back, the panel goes on completing what was typed: what counts is what it said when it was confirmed.
    std::optional<std::string> answer;
    QObject::connect(panel, &QFileDialog::filesSelected, panel, [&answer, &panel] { answer = chosenIn(*panel); });
    panel->setWindowModality(parent == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
    panel->show();
    panel->raise();
    panel->activateWindow();
    if (m_opened) {
        m_opened(message);
    }
    const bool isAccepted = panel->exec() == QDialog::Accepted;
    m_open.clear();
    if (panel.isNull()) {
        return std::nullopt;
    }
    panel->deleteLater();
    return isAccepted ? answer : std::nullopt;
}

}  // namespace kestrune
