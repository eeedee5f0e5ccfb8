#pragma once

#include <functional>
#include <memory>

#include "platform/UpdatePresenter.h"
#include "ui/UpdateWindow.h"

namespace kestrune {

/// Shows updates in a window of our own, which is made when it is first needed. Main thread.
class QtUpdatePresenter final : public UpdatePresenter {
public:
    /// prepare makes the interface ready; called before the window is made.
    explicit QtUpdatePresenter(std::function<void()> prepare);
    ~QtUpdatePresenter() override;

    void showChecking(std::function<void()> cancel) override;
    void showUpdate(const UpdateItem& item, const std::string& runningVersion,
                    std::function<void(UpdateChoice)> answer) override;
    void showDownload(const UpdateItem& item, std::function<void()> cancel) override;
    void setDownloaded(std::int64_t bytes, std::int64_t total) override;
    void showInstalling(const UpdateItem& item) override;
    void showOutcome(const std::string& title, const std::string& text) override;
    void showReadyToRelaunch(const UpdateItem& item, std::function<void()> relaunch) override;
    void bringToFront() override;
    void close() override;

    /// The window, or null while there is none on the screen.
    [[nodiscard]] UpdateWindow* window() const;

private:
    /// What each button calls; closing the window calls the secondary one's.
    struct Answers {
        std::function<void()> primary = {};
        std::function<void()> secondary = {};
        std::function<void()> quiet = {};
        bool primaryCloses = true;
    };

    void show(const UpdateContent& content, Answers answers);
    void makeWindow();
    void take(UpdateWindow::Answer answer);

    std::function<void()> m_prepare;
    std::unique_ptr<UpdateWindow> m_window;
    Answers m_answers;
    bool m_isAnswered = false;
    unsigned m_state = 0;  ///< counts the states shown
};

}  // namespace kestrune
