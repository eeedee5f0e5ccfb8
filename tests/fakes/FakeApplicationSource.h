#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/ApplicationSource.h"

namespace kestrune {

/// What a test makes a part of the desktop say.
struct FakeDesktopPart {
    std::vector<SourcedApplication> applications;
    std::optional<std::int32_t> frontmost;
    bool isComplete = false;
    bool tellsFrontmost = false;
    std::vector<std::int32_t> closable;
    std::function<void()> beforeClosing;  ///< happens while a request is prepared
    std::vector<std::int32_t> asked;      ///< to close, in order
    std::vector<std::int32_t> closed;     ///< that were sent a request
    int reads = 0;
    ApplicationSource::ActivationHandler handler;
};

/// Lists, tells and closes what its part says.
class FakeApplicationSource final : public ApplicationSource {
public:
    explicit FakeApplicationSource(FakeDesktopPart& part) : m_part(part) {}

    [[nodiscard]] bool isAvailable() override { return true; }

    [[nodiscard]] bool isComplete() override { return m_part.isComplete; }

    [[nodiscard]] std::vector<SourcedApplication> applications() override {
        ++m_part.reads;
        return m_part.applications;
    }

    [[nodiscard]] std::optional<std::int32_t> frontmost() override { return m_part.frontmost; }

    [[nodiscard]] bool tellsFrontmost() override { return m_part.tellsFrontmost; }

    void observeActivation(ActivationHandler handler) override { m_part.handler = std::move(handler); }

    [[nodiscard]] bool close(std::int32_t pid, const IsStillMeant& isStillMeant) override {
        m_part.asked.push_back(pid);
        if (m_part.beforeClosing) {
            m_part.beforeClosing();
        }
        if (std::find(m_part.closable.begin(), m_part.closable.end(), pid) == m_part.closable.end() ||
            !isStillMeant()) {
            return false;
        }
        m_part.closed.push_back(pid);
        return true;
    }

private:
    FakeDesktopPart& m_part;
};

}  // namespace kestrune
