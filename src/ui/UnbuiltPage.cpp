#include "ui/UnbuiltPage.h"

#include <QVBoxLayout>

#include "ui/EmptyState.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

QString sentence(WorkspacePage page) {
    switch (page) {
        case WorkspacePage::automation:
            return QStringLiteral(
                "This page comes with a later version of Kestrune. Until then, turn on Daily Scan Reminders in "
                "the menu.");
        default:
            return QStringLiteral("This page isn’t built yet. It comes with a later version of Kestrune.");
    }
}

}  // namespace

UnbuiltPage::UnbuiltPage(WorkspaceStore& store, WorkspacePage page, QWidget* parent) : Page(store, page, parent) {
    auto* empty = new EmptyState(body());
    empty->setContent(shown(symbol(page)), QStringLiteral("Not part of this version yet"), sentence(page));
    empty->setSpaceAbove(128);
    content().addWidget(empty);
    content().addStretch(1);
}

void UnbuiltPage::refresh() {
}

}  // namespace kestrune
