#pragma once

#include <QWidget>

#include "workspace/StorageListing.h"

namespace kestrune {

class Button;
class Picker;
class SearchField;
class TextLabel;
class Toggle;

/// What of the storage list is offered and used just now.
struct StorageControlsState {
    bool filter = true;
    bool selectBuildCaches = false;
    bool clearSelection = false;
    bool save = false;
    bool restore = false;
};

/// The two lines of controls above the storage list: what it shows, and what is selected in it.
class StorageControls final : public QWidget {
    Q_OBJECT

public:
    explicit StorageControls(QWidget* parent = nullptr);

    [[nodiscard]] StorageFilter filter() const;
    void setState(const StorageControlsState& state);

    /// Narrow windows leave out the picker's label.
    void setNarrow(bool narrow);

    [[nodiscard]] QWidget* lastFocusStop() const;

Q_SIGNALS:
    void filterChanged();
    void selectWanted();
    void clearWanted();
    void saveWanted();
    void restoreWanted();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    TextLabel* m_label;
    Picker* m_category;
    SearchField* m_search;
    Toggle* m_excluded;
    Button* m_select;
    Button* m_clear;
    Button* m_save;
    Button* m_restore;
    bool m_narrow = false;
};

}  // namespace kestrune
