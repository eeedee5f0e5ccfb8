#pragma once

#include <QListWidget>
#include <functional>

#include "workspace/WorkspacePage.h"

namespace kestrune {

/// The list of pages. Up, Down, Home and End move and select.
class Sidebar final : public QListWidget {
    Q_OBJECT

public:
    explicit Sidebar(QWidget* parent = nullptr);

    /// Selects page without telling that it was chosen.
    void setPage(WorkspacePage page);

    [[nodiscard]] static int breadth();

Q_SIGNALS:
    void chosen(kestrune::WorkspacePage page);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace kestrune
