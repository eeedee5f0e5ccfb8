#pragma once

#include <string>
#include <utility>

#include "platform/StatusItem.h"

namespace kestrune {

/// A status item that notes what it is given to show.
class FakeStatusItem final : public StatusItem {
public:
    void start(Handlers newHandlers) override { handlers = std::move(newHandlers); }

    void update(const StatusItemContent& newContent) override {
        content = newContent;
        ++updates;
    }

    [[nodiscard]] bool isShown() const override { return shown; }

    [[nodiscard]] const std::string& title() const { return content.title; }

    Handlers handlers;
    StatusItemContent content;
    bool shown = true;
    int updates = 0;
};

}  // namespace kestrune
