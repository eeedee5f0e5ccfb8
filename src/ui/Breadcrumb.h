#pragma once

#include <QString>
#include <QWidget>
#include <string>
#include <vector>

#include "workspace/ExplorerListing.h"

namespace kestrune {

class Button;
class CrumbButton;
class TextLabel;

/// Where the explored folder lies, and the ways out of it: back, forward, up, and each folder above. Folders that do
/// not fit are left out from the left and stand in the menu of "…".
class Breadcrumb final : public QWidget {
    Q_OBJECT

public:
    explicit Breadcrumb(QWidget* parent = nullptr);

    /// The way to the folder, which is last.
    void setFolder(std::vector<ExplorerCrumb> crumbs);

    /// What stands at the far right.
    void setCounts(const QString& counts);

    void setCanGoBack(bool can);
    void setCanGoForward(bool can);
    void setCanGoUp(bool can);

    /// Whether the folders above can be chosen.
    void setCanChoose(bool can);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void chosen(const std::string& path);
    void upWanted();
    void backWanted();
    void forwardWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void place();
    void showCrumbs(std::size_t first, int left, int right);
    [[nodiscard]] int crumbWidth(std::size_t index) const;
    void makeButton();
    void openMenu();

    /// The first crumb that has room when all behind it are shown.
    [[nodiscard]] std::size_t firstThatFits(int room) const;

    std::vector<ExplorerCrumb> m_crumbs;
    std::size_t m_firstShown = 0;   // of m_crumbs
    std::vector<int> m_separators;  // where each › begins
    int m_symbolLeft = 0;
    bool m_canChoose = true;
    Button* m_back;
    Button* m_forward;
    Button* m_up;
    CrumbButton* m_hidden;                // "…"
    std::vector<CrumbButton*> m_buttons;  // of the ancestors that are shown, as many as were ever needed
    TextLabel* m_current;
    TextLabel* m_counts;
};

}  // namespace kestrune
