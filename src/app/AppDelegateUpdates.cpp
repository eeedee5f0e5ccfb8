#include "app/AppDelegate.h"

namespace kestrune {

void AppDelegate::checkUpdates() {
    m_parts.updater.checkForUpdates();
}

void AppDelegate::didFindValidUpdate(const UpdateItem& /*item*/) {
    m_parts.store.updateAvailable.set(true);
    refresh();
}

void AppDelegate::willHandleShowingUpdate(const UpdateItem& /*item*/, bool /*userInitiated*/) {
    refresh();
}

void AppDelegate::userDidMake(UpdateChoice /*choice*/, const UpdateItem& /*item*/) {
}

void AppDelegate::didNotFindUpdate() {
    m_parts.store.updateAvailable.set(false);
    refresh();
}

void AppDelegate::didAbortWithError(const UpdaterError& /*error*/) {
}

bool AppDelegate::shouldInstallUpdate() {
    return applicationShouldTerminate();
}

}  // namespace kestrune
