#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "base/Published.h"
#include "workspace/WorkspacePage.h"

class QStackedLayout;

namespace kestrune {

class Sidebar;
class WorkspaceStore;

/// Where the window's frame (x, y, width, height) is kept between runs.
struct WindowMemory {
    std::function<std::optional<std::vector<double>>()> load;
    std::function<void(const std::vector<double>&)> save;
};

/// The one large window: a sidebar of eight pages and the selected page. It reads the store's published state and
/// calls its operations. Closing only hides it. Main thread.
class WorkspaceWindow final : public QWidget {
    Q_OBJECT

public:
    WorkspaceWindow(WorkspaceStore& store, WindowMemory memory, QWidget* parent = nullptr);
    ~WorkspaceWindow() override;

    /// Shows the window on the store's page, in front of others and with the keyboard focus.
    void present();

Q_SIGNALS:
    /// The user closed the window; it is hidden now.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void restoreFrame();
    void saveFrame();
    void showPage();
    [[nodiscard]] QWidget* makePage(WorkspacePage page);

    WorkspaceStore& m_store;
    WindowMemory m_memory;
    Sidebar* m_sidebar;
    QStackedLayout* m_pages;
    std::array<QWidget*, allWorkspacePages.size()> m_made{};
    Subscription m_pageChanged;
};

}  // namespace kestrune
