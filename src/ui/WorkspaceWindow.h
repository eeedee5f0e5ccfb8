#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

namespace kestrune {

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
};

}  // namespace kestrune
