#pragma once

#include <QString>

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/ApplicationSource.h"

namespace kestrune {

class SessionBusCalls;

/// The quit action of programs built on GApplication, which they offer on the session bus under their application's
/// id. Lists nothing: a program may own such a name without showing itself. Main thread.
class GApplicationSource final : public ApplicationSource {
public:
    explicit GApplicationSource(std::string procRoot) : m_procRoot(std::move(procRoot)) {}

    [[nodiscard]] bool isAvailable() override;

    [[nodiscard]] bool isComplete() override { return false; }

    [[nodiscard]] std::vector<SourcedApplication> applications() override { return {}; }

    [[nodiscard]] std::optional<std::int32_t> frontmost() override { return std::nullopt; }

    [[nodiscard]] bool tellsFrontmost() override { return false; }

    void observeActivation(ActivationHandler) override {}

    [[nodiscard]] bool close(std::int32_t pid, const IsStillMeant& isStillMeant) override;

private:
    /// A connection to the bus and a name it owns.
    struct Owner {
        QString connection;
        QString name;
        std::int32_t pid = 0;
    };

    [[nodiscard]] static std::vector<Owner> owners(const SessionBusCalls& calls);
    [[nodiscard]] bool speaksFor(const Owner& owner, std::int32_t pid) const;

    std::string m_procRoot;
};

}  // namespace kestrune
