#pragma once

#include <utility>
#include <vector>

#include "platform/NotificationCenter.h"

namespace kestrune {

/// Notes what would be shown and heard. Answers come at once, or when the test says so after holdAnswers.
class FakeNotificationCenter final : public NotificationCenter {
public:
    struct Delivered {
        std::string title;
        std::string body;

        bool operator==(const Delivered&) const = default;
    };

    [[nodiscard]] bool hasIdentity() const override { return identity; }

    void queryAuthorization(std::function<void(NotificationAuthorization)> answer) override {
        ++queries;
        submit([this, answer = std::move(answer)] { answer(authorization); });
    }

    void requestAuthorization(std::function<void(bool granted)> answer) override {
        ++requests;
        submit([this, answer = std::move(answer)] { answer(granted); });
    }

    void deliver(const std::string& title, const std::string& body) override { delivered.push_back({title, body}); }

    bool playSound(const std::string& name) override {
        sounds.push_back(name);
        return soundPlays;
    }

    void beep() override { ++beeps; }

    /// Gives the answers that were held back; what they ask in turn is held back again.
    void answerHeld() {
        for (const auto& answer : std::exchange(m_held, {})) {
            answer();
        }
    }

    bool identity = true;
    NotificationAuthorization authorization = NotificationAuthorization::authorized;
    bool granted = true;
    bool soundPlays = true;
    bool holdAnswers = false;

    std::vector<Delivered> delivered;
    std::vector<std::string> sounds;
    int queries = 0;
    int requests = 0;
    int beeps = 0;

private:
    void submit(std::function<void()> answer) {
        if (holdAnswers) {
            m_held.push_back(std::move(answer));
        } else {
            answer();
        }
    }

    std::vector<std::function<void()>> m_held;
};

}  // namespace kestrune
