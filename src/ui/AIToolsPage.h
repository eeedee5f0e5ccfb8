#pragma once

#include <map>
#include <string>
#include <vector>

#include "ui/Page.h"

namespace kestrune {

class Button;
struct CleanTarget;
class LiveRowList;
class ModelRow;
class NoteStrips;
class ProgressStrip;
class RowList;
class TextLabel;

/// The model folders that take space, and the AI tools that run.
class AIToolsPage final : public Page {
    Q_OBJECT

public:
    explicit AIToolsPage(WorkspaceStore& store, QWidget* parent = nullptr);

protected:
    void refresh() override;

private:
    void addSection(const QString& title, const QString& text);
    void addButtons(const std::vector<Button*>& buttons);
    [[nodiscard]] Button* pageButton(const QString& label, WorkspacePage page);
    void inspectFolder();
    [[nodiscard]] ModelRow* rowFor(const CleanTarget& target);
    void refreshModels();
    void refreshTools();

    // In this order they are made, and the Tab key goes through them.
    NoteStrips* m_notes;
    ProgressStrip* m_progress;
    RowList* m_models;
    TextLabel* m_noModels;
    Button* m_review;
    Button* m_inspect;
    LiveRowList* m_tools;
    TextLabel* m_noTools;
    Button* m_allApps;
    std::map<std::string, ModelRow*> m_rows;  // by target id
};

}  // namespace kestrune
