#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/Updater.h"

namespace kestrune {

/// The one window about updates, where the system brings none. Each call shows its state in place of the one before,
/// and takes its callback's place; a callback is called at most once, from the event loop, and closing the window means
/// what its quiet button means. Main thread.
class UpdatePresenter {
public:
    UpdatePresenter() = default;
    UpdatePresenter(const UpdatePresenter&) = delete;
    UpdatePresenter& operator=(const UpdatePresenter&) = delete;
    virtual ~UpdatePresenter() = default;

    /// A check that the user asked for is under way.
    virtual void showChecking(std::function<void()> cancel) = 0;

    /// Asks what to do with item: install, remind later (dismiss), skip this version. In front of other windows.
    virtual void showUpdate(const UpdateItem& item, const std::string& runningVersion,
                            std::function<void(UpdateChoice)> answer) = 0;

    /// The archive is being fetched.
    virtual void showDownload(const UpdateItem& item, std::function<void()> cancel) = 0;

    /// How much of it is here. While showDownload's state is shown.
    virtual void setDownloaded(std::int64_t bytes, std::int64_t total) = 0;

    /// The archive is verified and being put in place, which cannot be stopped.
    virtual void showInstalling(const UpdateItem& item) = 0;

    /// A statement that the user closes: that there is nothing newer, or what went wrong.
    virtual void showOutcome(const std::string& title, const std::string& text) = 0;

    /// The new version is in place: offers to start it now, or later.
    virtual void showReadyToRelaunch(const UpdateItem& item, std::function<void()> relaunch) = 0;

    /// Brings the window to the front as it is. Nothing when it is closed.
    virtual void bringToFront() = 0;

    virtual void close() = 0;
};

}  // namespace kestrune
