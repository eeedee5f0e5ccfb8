#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/UpdatePresenter.h"

namespace kestrune {

/// A window that a test looks at and presses the buttons of. Like the real one it calls back at most once a state.
class FakeUpdatePresenter final : public UpdatePresenter {
public:
    enum class State { closed, checking, update, download, installing, outcome, readyToRelaunch };

    void showChecking(std::function<void()> newCancel) override {
        change(State::checking, "checking");
        m_press = std::move(newCancel);
    }

    void showUpdate(const UpdateItem& newItem, const std::string& version,
                    std::function<void(UpdateChoice)> newAnswer) override {
        change(State::update, "update " + newItem.displayVersion);
        item = newItem;
        runningVersion = version;
        m_answer = std::move(newAnswer);
    }

    void showDownload(const UpdateItem& newItem, std::function<void()> newCancel) override {
        change(State::download, "download " + newItem.displayVersion);
        item = newItem;
        m_press = std::move(newCancel);
    }

    void setDownloaded(std::int64_t bytes, std::int64_t total) override {
        downloaded.emplace_back(bytes, total);
        log.push_back("downloaded " + std::to_string(bytes) + "/" + std::to_string(total));
    }

    void showInstalling(const UpdateItem& newItem) override {
        change(State::installing, "installing " + newItem.displayVersion);
        item = newItem;
    }

    void showOutcome(const std::string& newTitle, const std::string& newText) override {
        change(State::outcome, "outcome");
        title = newTitle;
        text = newText;
    }

    void showReadyToRelaunch(const UpdateItem& newItem, std::function<void()> newRelaunch) override {
        change(State::readyToRelaunch, "ready " + newItem.displayVersion);
        item = newItem;
        m_press = std::move(newRelaunch);
    }

    void bringToFront() override {
        ++broughtToFront;
        log.emplace_back("front");
    }

    void close() override { change(State::closed, "close"); }

    /// Presses Install, Remind Me Later or Skip; false when nothing is asked.
    bool answer(UpdateChoice choice) {
        const auto tell = std::exchange(m_answer, nullptr);
        if (tell) {
            tell(choice);
        }
        return tell != nullptr;
    }

    /// Presses the one button of the other states: cancel, or relaunch; false when there is none.
    bool press() {
        const auto tell = std::exchange(m_press, nullptr);
        if (tell) {
            tell();
        }
        return tell != nullptr;
    }

    State state = State::closed;
    std::optional<UpdateItem> item;  ///< the one shown last
    std::string runningVersion;
    std::string title;
    std::string text;
    int broughtToFront = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> downloaded;
    std::vector<std::string> log;  ///< everything that was asked for, in order

private:
    void change(State newState, std::string entry) {
        state = newState;
        m_press = nullptr;
        m_answer = nullptr;
        log.push_back(std::move(entry));
    }

    std::function<void()> m_press;
    std::function<void(UpdateChoice)> m_answer;
};

}  // namespace kestrune
