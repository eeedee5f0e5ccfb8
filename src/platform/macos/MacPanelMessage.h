#pragma once

#include "platform/PanelMessage.h"

namespace kestrune {

/// NSOpenPanel's message: its title, the toolkit's place for the sentence, is shown nowhere. Main thread.
class MacPanelMessage final : public PanelMessage {
public:
    void show(const std::string& message) override;
};

}  // namespace kestrune
