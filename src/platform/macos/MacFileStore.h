#pragma once

#include "platform/FileStore.h"

namespace kestrune {

/// Reading follows links. Replacing follows one link, when the user owns it and the regular file it leads to: that file
/// is replaced (a configuration kept in another folder) and the link stays. Any other link, and anything that is
/// neither missing nor a regular file, is never replaced. Setting aside renames a link itself.
///
/// A file a killed run left half-written ("." + name + ".kestrune-" + 16 digits, the user's own, mode 0600, one link,
/// locked by no living writer) is removed by the next replace of the same file; nothing else in the folder is touched.
///
/// When all that fails is the very last step, syncing the folder after the rename, the new file stays in place and the
/// answer is false, because a power cut might still bring the old one back.
class MacFileStore final : public FileStore {
public:
    MacFileStore() = default;

    [[nodiscard]] FileContent read(const std::string& path, std::size_t maxBytes) const override;
    [[nodiscard]] bool replace(const std::string& path, std::string_view bytes) override;
    [[nodiscard]] bool setAside(const std::string& path) override;
};

}  // namespace kestrune
