#pragma once

#include <string>

#include "app/StatusItem.h"

namespace kestrune {

/// A status item that notes what it is given to show.
class FakeStatusItem final : public StatusItem {
public:
    void update(const StatusMenuModel& model) override {
        m_model = model;
        ++updates;
    }

    [[nodiscard]] bool isShown() const override { return shown; }

    [[nodiscard]] const std::string& title() const { return m_model.title(); }

    bool shown = true;
    int updates = 0;

private:
    StatusMenuModel m_model;
};

}  // namespace kestrune
