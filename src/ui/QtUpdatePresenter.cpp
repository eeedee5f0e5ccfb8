#include "ui/QtUpdatePresenter.h"

#include <utility>

#include "ui/UpdateWindow.h"

namespace kestrune {

QtUpdatePresenter::QtUpdatePresenter(std::function<void()> prepare) : m_prepare(std::move(prepare)) {
}

QtUpdatePresenter::~QtUpdatePresenter() = default;

void QtUpdatePresenter::showChecking(std::function<void()> /*cancel*/) {
}

void QtUpdatePresenter::showUpdate(const UpdateItem& /*item*/, const std::string& /*runningVersion*/,
                                   std::function<void(UpdateChoice)> /*answer*/) {
}

void QtUpdatePresenter::showDownload(const UpdateItem& /*item*/, std::function<void()> /*cancel*/) {
}

void QtUpdatePresenter::setDownloaded(std::int64_t /*bytes*/, std::int64_t /*total*/) {
}

void QtUpdatePresenter::showInstalling(const UpdateItem& /*item*/) {
}

void QtUpdatePresenter::showOutcome(const std::string& /*title*/, const std::string& /*text*/) {
}

void QtUpdatePresenter::showReadyToRelaunch(const UpdateItem& /*item*/, std::function<void()> /*relaunch*/) {
}

void QtUpdatePresenter::bringToFront() {
}

void QtUpdatePresenter::close() {
}

UpdateWindow* QtUpdatePresenter::window() const {
    return m_window.get();
}

}  // namespace kestrune
