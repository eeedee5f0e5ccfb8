#pragma once

#include <memory>

#include "platform/Appearance.h"

namespace kestrune {

/// The appearance AppKit draws this program with, and the user's choice of less motion. The application object exists.
/// Main thread.
class MacAppearance final : public Appearance {
public:
    MacAppearance();
    ~MacAppearance() override;

    /// Calls handler the first time before it returns.
    void start(Handler handler) override;

private:
    struct Watch;

    std::unique_ptr<Watch> m_watch;
};

}  // namespace kestrune
