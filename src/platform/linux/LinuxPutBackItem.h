#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxMounts.h"
#include "platform/linux/LinuxPutBackRecord.h"
#include "platform/linux/LinuxTrashWay.h"

namespace kestrune {

/// An item that lies in the user's Trash, held by descriptors together with the folders it lies in, and what its
/// restore record says.
struct LinuxPutBackItem {
    std::string location;
    std::string name;       ///< in files
    std::string trashPath;  ///< without links
    LinuxFolder trash;
    LinuxFolder files;
    LinuxFolder info;
    LinuxFileDescriptor item;
    LinuxFileStatus status;
    FileIdentity record;
    std::string originalPath;  ///< absolute, below home

    /// Whether the item still has its name in the Trash.
    [[nodiscard]] bool isInPlace() const;
};

/// Pins items of the Trash that a move to the Trash may have put there. What the constructor takes must outlive it. Any
/// thread.
class LinuxPutBackFinder final {
public:
    /// home is absolute and in standard form; dataHome is an absolute path, or empty for ".local/share" in home. mounts
    /// are those of this moment.
    LinuxPutBackFinder(const std::string& home, const std::string& dataHome, const std::vector<LinuxMount>& mounts);

    /// Fills item with what lies at location; the reason when that is not possible. No link is followed but the user's
    /// own at the Trash, and nothing is made.
    [[nodiscard]] std::optional<PutBackError> pin(const std::string& location, LinuxPutBackItem& item) const;

private:
    [[nodiscard]] std::optional<PutBackError> openTrash(LinuxPutBackItem& item, std::string& recordBase) const;
    [[nodiscard]] std::optional<PutBackError> openItem(LinuxPutBackItem& item) const;
    [[nodiscard]] std::optional<PutBackError> readRecord(const std::string& recordBase, LinuxPutBackItem& item) const;
    [[nodiscard]] LinuxWalk goToHomeTrash() const;
    [[nodiscard]] std::optional<std::string> topDirectoryOf(const LinuxPutBackItem& item) const;

    const std::string& m_home;
    const std::string& m_dataHome;
    const std::vector<LinuxMount>& m_mounts;
};

}  // namespace kestrune
