#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/UpdateInstaller.h"

namespace kestrune {

/// Puts nothing in place; a test says what came of it.
class FakeUpdateInstaller final : public UpdateInstaller {
public:
    [[nodiscard]] std::optional<std::string> archiveSuffix() const override { return suffix; }

    void install(const std::string& path, Answer newAnswer) override {
        installed.push_back(path);
        m_answer = std::move(newAnswer);
    }

    void relaunch() override { ++relaunches; }

    /// Answers the installation under way; false when there is none.
    bool answer(Result<Outcome, UpdaterError> result) {
        if (!m_answer) {
            return false;
        }
        std::exchange(m_answer, nullptr)(std::move(result));
        return true;
    }

    std::optional<std::string> suffix = "AppImage";
    std::vector<std::string> installed;  ///< the archives, in order
    int relaunches = 0;

private:
    Answer m_answer;
};

}  // namespace kestrune
