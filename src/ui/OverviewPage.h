#pragma once

#include "ui/Page.h"

namespace kestrune {

class HeroPanel;
class RowList;
class TileGrid;

/// The machine's figures and the ways to the other pages.
class OverviewPage final : public Page {
    Q_OBJECT

public:
    explicit OverviewPage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;
    void arrange(int margin, bool narrow) override;

private:
    void addActions();
    void refreshHero();

    TileGrid* m_tiles;
    HeroPanel* m_hero;
    RowList* m_actions;
};

}  // namespace kestrune
