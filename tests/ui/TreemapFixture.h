#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <string>
#include <vector>

#include "ui/TreemapView.h"

namespace kestrune {

[[nodiscard]] inline ExplorerTile treemapTile(const std::string& name, std::int64_t bytes, int rank,
                                              bool isDirectory = true) {
    ExplorerTile tile;
    tile.path = "/home/anna/" + name;
    tile.name = name;
    tile.size = std::to_string(bytes) + " GB";
    tile.percent = std::to_string(bytes) + "%";
    tile.bytes = bytes;
    tile.share = static_cast<double>(bytes) / 100;
    tile.rank = rank;
    tile.isDirectory = isDirectory;
    return tile;
}

/// "Projects" 50, "Music" 30 and "disk.img", a file, 15 of 100, and one tile for 7 smaller items.
[[nodiscard]] inline std::vector<ExplorerTile> treemapTiles() {
    std::vector<ExplorerTile> tiles{treemapTile("Projects", 50, 0), treemapTile("Music", 30, 1),
                                    treemapTile("disk.img", 15, 2, false), treemapTile("", 5, 8, false)};
    tiles.back().path.clear();
    tiles.back().name = "7 smaller items";
    return tiles;
}

/// A picture on screen, and what it told.
class TreemapFixture : public ::testing::Test {
protected:
    TreemapFixture() : before(&window), view(&window) {
        window.resize(776, 300);
        before.setFocusPolicy(Qt::StrongFocus);
        before.setFocus();
        view.setGeometry(0, 50, 776, 200);
        QObject::connect(&view, &TreemapView::hovered, &window,
                         [this](const std::string& path) { hovers.push_back(path); });
        QObject::connect(&view, &TreemapView::selected, &window,
                         [this](const std::string& path) { selections.push_back(path); });
        QObject::connect(&view, &TreemapView::explored, &window,
                         [this](const std::string& path) { explorations.push_back(path); });
        QObject::connect(&view, &TreemapView::menuWanted, &window,
                         [this](const std::string& path, const QPoint& place) {
                             menus.push_back(path);
                             menuPlace = place;
                         });
        window.show();
        window.activateWindow();
        view.setTiles(treemapTiles());
        QApplication::processEvents();
    }

    using Paths = std::vector<std::string>;

    [[nodiscard]] QPoint middleOf(std::size_t index) const { return view.tileRect(index).center(); }

    QWidget window;
    QWidget before;  ///< has the keyboard first
    TreemapView view;
    Paths hovers;
    Paths selections;
    Paths explorations;
    Paths menus;
    QPoint menuPlace;
};

}  // namespace kestrune
