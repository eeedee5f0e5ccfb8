#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "explorer/DiskExplorerResult.h"

class QSpacerItem;
class QVBoxLayout;

namespace kestrune {

class Breadcrumb;
class Button;
class Disclosure;
class ExplorerList;
class ExplorerProgressStrip;
class Painted;
class Strip;
class TextLabel;
class TreemapView;
class WorkspaceStore;

/// What the explorer found in a folder, or has found so far: the way to it, its picture, and its largest entries and
/// files. What is pointed at or chosen in one of them is so in the others.
class ExplorerFindings final : public QWidget {
    Q_OBJECT

public:
    explicit ExplorerFindings(WorkspaceStore& store, QWidget* parent = nullptr);

    /// Shows what the store holds: the running scan's progress, or the result.
    void refresh();

    /// Tells screen readers that a scan ended, and that it did not see everything.
    void announce();

    [[nodiscard]] Button* stopButton() const;

    /// Whether widget belongs to the way to the folder, which stays what it is from folder to folder.
    [[nodiscard]] bool isOnPath(const QWidget* widget) const;

    /// What takes the keyboard focus in a folder just explored; null where there is nothing.
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    /// A row was chosen elsewhere and may lie outside of the visible part.
    void rowWanted(QWidget* row);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void build();
    TextLabel* addHeading(QVBoxLayout& layout, const QString& title);
    void connectPath();
    void connectPicture();
    void connectList(ExplorerList& list);
    void refreshPath(bool scanning);
    void refreshStrips(const DiskExplorerResult& found, bool scanning);
    void refreshLists(const DiskExplorerResult& found, bool scanning);
    void choose(const std::string& path);
    void openMenu(const std::string& path, const QPoint& place);
    void bringRow();

    WorkspaceStore& m_store;

    // In this order they are made, and the Tab key goes through them.
    Breadcrumb* m_path;
    ExplorerProgressStrip* m_progress;
    Strip* m_incomplete;
    Painted* m_outcome;  // only heard
    TreemapView* m_picture;
    ExplorerList* m_folders;
    TextLabel* m_noFolders;
    TextLabel* m_cut;
    ExplorerList* m_files;
    TextLabel* m_noFiles;
    Disclosure* m_method;
    TextLabel* m_filesHeading = nullptr;
    QSpacerItem* m_belowStrip;
    QSpacerItem* m_belowPicture;
    QSpacerItem* m_aboveFiles;
    std::string m_root;    // whose findings are shown
    std::string m_chosen;  // a path
    QTimer m_rowWantedSoon{this};
};

}  // namespace kestrune
