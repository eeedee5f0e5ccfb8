#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/macos/UserDefaults.h"

namespace kestrune {

/// NSUserDefaults.
class MacUserDefaults final : public UserDefaults {
public:
    /// What the program keeps its settings in: with a bundle identifier the standard store; without one the suite that
    /// the environment names, or else the standard store. A suite that cannot be made ends the program.
    [[nodiscard]] static std::unique_ptr<UserDefaults> forThisProgram();

    ~MacUserDefaults() override;

    [[nodiscard]] DefaultsValue value(const std::string& key) const override;
    void setValue(const std::string& key, const DefaultsValue& value) override;
    [[nodiscard]] bool synchronize() override;
    void watch(const std::string& key, std::function<void()> changed) override;

private:
    struct Objects;

    explicit MacUserDefaults(std::unique_ptr<Objects> objects);

    const std::unique_ptr<Objects> m_objects;
};

}  // namespace kestrune
