#pragma once

#include <map>
#include <string>

#include "storage/CleanTarget.h"
#include "ui/Page.h"

namespace kestrune {

class EmptyState;
class LoadingRows;
class NoteStrips;
class ProgressStrip;
class RowList;
class StorageControls;
class StorageFooter;
class StorageRow;
class TextLabel;

/// The cleanup locations with their sizes: what is shown, what is selected, and the way to the confirmation.
class StoragePage final : public Page {
    Q_OBJECT

public:
    explicit StoragePage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;
    void arrange(int margin, bool narrow) override;

private:
    void connectControls();
    void refreshProgress();
    void refreshControls();
    void refreshRows();
    void refreshEmpty(bool anyRow);
    void refreshFooter();
    [[nodiscard]] StorageRow* rowFor(const CleanTarget& target);
    void chainFocus();

    ProgressStrip* m_progress;
    NoteStrips* m_notes;
    StorageControls* m_controls;
    RowList* m_list;
    LoadingRows* m_loading;
    EmptyState* m_empty;
    StorageFooter* m_footer;
    std::map<std::string, StorageRow*> m_rows;  // by target id
};

}  // namespace kestrune
