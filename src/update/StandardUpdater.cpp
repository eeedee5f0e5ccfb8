#include "update/StandardUpdater.h"

#include <utility>

namespace kestrune {

StandardUpdater::StandardUpdater(StandardUpdaterParts parts) : m_parts(std::move(parts)) {
}

StandardUpdater::~StandardUpdater() = default;

bool StandardUpdater::isConfigured() const {
    return !m_parts.source.feedUrl.empty();
}

void StandardUpdater::start(UpdaterDelegate& delegate) {
    m_delegate = &delegate;
}

void StandardUpdater::checkForUpdates() {
}

}  // namespace kestrune
