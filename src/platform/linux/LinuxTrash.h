#pragma once

#include <optional>
#include <string>

#include "platform/Trash.h"

namespace kestrune {

/// The Trash of freedesktop.org's Trash specification 1.0, which file managers show and restore from.
class LinuxTrash final : public Trash {
public:
    /// dataHome is the value of XDG_DATA_HOME; one that is not absolute counts as none, and the Trash is then the one
    /// in
    /// ".local/share" of the home folder a request names.
    explicit LinuxTrash(std::optional<std::string> dataHome = {});

    [[nodiscard]] std::optional<FileIdentity> identity(const std::string& home,
                                                       const std::string& relativePath) override;
    [[nodiscard]] std::optional<bool> isEmpty(const std::string& home) override;
    [[nodiscard]] Result<TrashedItem, TrashError> moveToTrash(const TrashRequest& request) override;
    [[nodiscard]] Result<PutBackPlan, PutBackError> planPutBack(const std::string& home,
                                                                const std::string& location) override;
    [[nodiscard]] Result<std::string, PutBackError> putBack(const std::string& home, const PutBackPlan& plan) override;

private:
    const std::string m_dataHome;  ///< empty without one
};

}  // namespace kestrune
