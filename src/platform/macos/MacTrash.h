#pragma once

#include <optional>
#include <string>

#include "platform/Trash.h"
#include "platform/macos/MacTrashItem.h"

namespace kestrune {

/// The Trash of macOS: the system moves items there, this program checks what moves. See MacTrashMove for what is
/// guaranteed. An item carries its restore record as an extended attribute, where its volume keeps those; without one
/// it is put back from the Finder.
class MacTrash final : public Trash {
public:
    /// system must outlive the object.
    explicit MacTrash(MacTrashItem& system) : m_system(system) {}

    [[nodiscard]] std::optional<FileIdentity> identity(const std::string& home,
                                                       const std::string& relativePath) override;
    [[nodiscard]] std::optional<bool> isEmpty(const std::string& home) override;
    [[nodiscard]] Result<TrashedItem, TrashError> moveToTrash(const TrashRequest& request) override;
    [[nodiscard]] Result<PutBackPlan, PutBackError> planPutBack(const std::string& home,
                                                                const std::string& location) override;
    [[nodiscard]] Result<std::string, PutBackError> putBack(const std::string& home, const PutBackPlan& plan) override;

private:
    MacTrashItem& m_system;
};

}  // namespace kestrune
