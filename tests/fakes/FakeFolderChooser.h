#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/FolderChooser.h"

namespace kestrune {

/// Answers at once with what the test laid down.
class FakeFolderChooser final : public FolderChooser {
public:
    [[nodiscard]] std::optional<std::string> chooseFolder(const std::string& message,
                                                          const std::string& startFolder) override {
        asked.emplace_back(message, startFolder);
        if (whileOpen) {
            whileOpen();
        }
        return answer;
    }

    std::optional<std::string> answer;                       ///< nothing: dismissed
    std::vector<std::pair<std::string, std::string>> asked;  ///< message and start folder, in order
    std::function<void()> whileOpen;
};

}  // namespace kestrune
