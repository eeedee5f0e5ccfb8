#pragma once

#include <string>

namespace kestrune {

/// Has the system's own folder panel say what the toolkit, which shows it, has no way to hand over. Main thread.
class PanelMessage {
public:
    PanelMessage() = default;
    PanelMessage(const PanelMessage&) = delete;
    PanelMessage& operator=(const PanelMessage&) = delete;
    virtual ~PanelMessage() = default;

    /// Shows message in the panel that was opened just now; nothing where there is none.
    virtual void show(const std::string& message) = 0;
};

}  // namespace kestrune
