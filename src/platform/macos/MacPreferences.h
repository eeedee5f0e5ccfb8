#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Preferences.h"
#include "platform/macos/UserDefaults.h"

namespace kestrune {

/// The settings in the user defaults: a boolean, an array of texts, a date, an array of numbers. Only what was stored
/// as a boolean reads as one: a number or the text "YES" does not. In an array of texts, a text that would not come
/// back byte for byte (it is not UTF-8, holds a NUL, or begins with a byte order mark) is a data object.
///
/// What cannot be saved, and a list of more than 1 MiB, which is never handed to the system, holds for this session; it
/// goes out with the next set that succeeds. A number or date that is not finite is refused.
class MacPreferences final : public Preferences {
public:
    static constexpr std::size_t listBytesAtMost = std::size_t{1024} * 1024;

    explicit MacPreferences(std::unique_ptr<UserDefaults> defaults);

    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const override;
    [[nodiscard]] std::optional<Texts> texts(const std::string& key) const override;
    [[nodiscard]] std::optional<WallTime> date(const std::string& key) const override;
    [[nodiscard]] std::optional<std::vector<double>> numbers(const std::string& key) const override;

    /// Changes with every set, and when another program changes a value that was asked for before.
    [[nodiscard]] std::uint64_t revision() const override;

    bool setBoolean(const std::string& key, bool value) override;
    bool setTexts(const std::string& key, const Texts& value) override;
    bool setDate(const std::string& key, WallTime value) override;
    bool setNumbers(const std::string& key, const std::vector<double>& value) override;

private:
    [[nodiscard]] DefaultsValue value(const std::string& key) const;
    [[nodiscard]] bool set(const std::string& key, DefaultsValue value);

    /// Counted up by whoever changes a value, on that one's thread, without the lock.
    const std::shared_ptr<std::atomic<std::uint64_t>> m_changes = std::make_shared<std::atomic<std::uint64_t>>(0);
    mutable std::mutex m_lock;
    mutable std::set<std::string> m_watched;
    std::map<std::string, DefaultsValue> m_unsaved;
    const std::unique_ptr<UserDefaults> m_defaults;
};

}  // namespace kestrune
