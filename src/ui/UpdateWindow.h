#pragma once

#include <QString>
#include <QWidget>
#include <cstdint>
#include <string>

namespace kestrune {

class Button;
class DownloadBar;
class NotesView;
class SymbolPlate;
class TextLabel;

/// One state of the window about updates. A button without a label is not there.
struct UpdateContent {
    QString symbol = {};
    QString title = {};
    QString text = {};
    std::string notes = {};  ///< as they came
    bool hasBar = false;
    QString primary = {};
    QString secondary = {};
    QString quiet = {};
};

/// The window about updates: checking, the question, the download, the outcome. It shows what it is given and tells
/// what was pressed.
class UpdateWindow final : public QWidget {
    Q_OBJECT

public:
    /// What the user did; closing and Escape are the secondary button's.
    enum class Answer { primary, secondary, quiet };

    explicit UpdateWindow(QWidget* parent = nullptr);

    void setContent(const UpdateContent& content);

    /// total 0 or less: not known.
    void setDownloaded(std::int64_t bytes, std::int64_t total);

    /// Shows it in front of other windows, the default button having the focus.
    void present();

    [[nodiscard]] Button& button(Answer answer) const;

Q_SIGNALS:
    void answered(Answer answer);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] class QLayout* makeButtons();
    void fit();
    void focusDefault();

    SymbolPlate* m_plate;
    TextLabel* m_title;
    TextLabel* m_text;
    NotesView* m_notes;
    DownloadBar* m_bar;
    TextLabel* m_amount;
    Button* m_primary;
    Button* m_secondary;
    Button* m_quiet;
};

}  // namespace kestrune
