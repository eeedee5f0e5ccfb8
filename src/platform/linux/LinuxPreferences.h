#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileStore.h"
#include "platform/Preferences.h"

namespace kestrune {

/// The settings in one JSON file of at most 1 MiB, read at the first use. Every set reads the file again, so that what
/// another program put there since stays; keys this program does not know stay, too. A file that is no such file is set
/// aside by the first set that needs its place, never overwritten. A value that could not be saved goes out with the
/// next set that succeeds. A number or date that is not finite is refused.
///
/// In the file a text is a string, or {"bytes": "%FF…"} when it is not UTF-8; a date is the number of seconds since
/// 1970.
class LinuxPreferences final : public Preferences {
public:
    static constexpr std::size_t fileBytesAtMost = std::size_t{1024} * 1024;

    /// path is the file's; files outlives this object.
    LinuxPreferences(std::string path, FileStore& files);
    ~LinuxPreferences() override;

    /// The file of the standard settings, or of the named suite. A suite that has no plain name ends the program.
    [[nodiscard]] static std::string standardPath(const std::string& configHome,
                                                  const std::optional<std::string>& suite);

    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const override;
    [[nodiscard]] std::optional<Texts> texts(const std::string& key) const override;
    [[nodiscard]] std::optional<WallTime> date(const std::string& key) const override;
    [[nodiscard]] std::optional<std::vector<double>> numbers(const std::string& key) const override;

    /// The file is read at the first use and by every set: another program's change shows at the next set.
    [[nodiscard]] std::uint64_t revision() const override;

    bool setBoolean(const std::string& key, bool value) override;
    bool setTexts(const std::string& key, const Texts& value) override;
    bool setDate(const std::string& key, WallTime value) override;
    bool setNumbers(const std::string& key, const std::vector<double>& value) override;

private:
    struct Values;

    const std::string m_path;
    FileStore& m_files;
    mutable std::mutex m_lock;
    const std::unique_ptr<Values> m_values;
};

}  // namespace kestrune
