#pragma once

#include "ui/Page.h"

namespace kestrune {

/// A page of a later version: it says so.
class UnbuiltPage final : public Page {
    Q_OBJECT

public:
    UnbuiltPage(WorkspaceStore& store, WorkspacePage page, QWidget* parent = nullptr);

protected:
    void refresh() override;
};

}  // namespace kestrune
