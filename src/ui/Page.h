#pragma once

#include <QWidget>
#include <vector>

#include "base/Published.h"
#include "workspace/WorkspacePage.h"

class QVBoxLayout;

namespace kestrune {

class Button;
class PageHeader;
class ScrollArea;
class Strip;
class WorkspaceStore;

/// What every page has: a header, the store's last message under it, a scrolling body and, where a page wants one, a
/// footer. A page reads the store only while it is visible, and once more when it is shown.
class Page : public QWidget {
    Q_OBJECT

public:
    Page(WorkspaceStore& store, WorkspacePage page, QWidget* parent = nullptr);

    /// The fixed sentence under the title of page.
    [[nodiscard]] static QString subtitle(WorkspacePage page);

    [[nodiscard]] ScrollArea* scrollArea() const { return m_scroll; }

protected:
    /// Adds a button to the header after those already there, in the tab order as well.
    Button* addHeaderButton(const QString& label, const QString& symbol = {});

    /// Shows what the store holds now. Called while visible, after any change of a watched field.
    virtual void refresh() = 0;

    /// Room at both sides changed, to margin pixels; narrow windows drop what they can do without.
    virtual void arrange(int margin, bool narrow);

    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    template <typename T>
    void watch(Published<T>& field) {
        m_subscriptions.push_back(field.observe([this] { changed(); }));
    }

    [[nodiscard]] WorkspaceStore& store() const { return m_store; }

    [[nodiscard]] PageHeader& header() const { return *m_header; }

    /// Strips between the header and the body.
    [[nodiscard]] QVBoxLayout& strips() const { return *m_strips; }

    /// Keeps room under the strips while one is shown. To be called after showing or hiding one.
    void arrangeStrips();

    [[nodiscard]] QWidget* body() const { return m_body; }

    [[nodiscard]] QVBoxLayout& content() const { return *m_content; }

    void setFooter(QWidget* footer);

private:
    /// The button that lists processes anew.
    void addRefreshButton();

    /// The scan button and the stop button beside it.
    void addScanButtons();

    void changed();
    void refreshAll();
    void refreshMessage();
    void arrangeFor(int width);

    WorkspaceStore& m_store;
    PageHeader* m_header;
    QWidget* m_lastInHeader;  ///< its last button; the header itself while it has none
    Strip* m_message;
    QVBoxLayout* m_strips;
    ScrollArea* m_scroll;
    QWidget* m_body;
    QVBoxLayout* m_content;
    QVBoxLayout* m_outer;
    Button* m_scan = nullptr;
    Button* m_stopScan = nullptr;
    int m_margin = 0;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace kestrune
