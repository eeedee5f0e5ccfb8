#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Preferences.h"

namespace kestrune {

/// Settings in memory. While `failsSaving`, a set holds (as for the session) and answers false.
class FakePreferences final : public Preferences {
public:
    using Value = std::variant<bool, Texts, WallTime, std::vector<double>>;

    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const override { return value<bool>(key); }

    [[nodiscard]] std::optional<Texts> texts(const std::string& key) const override {
        ++textQuestions;
        return value<Texts>(key);
    }

    [[nodiscard]] std::optional<WallTime> date(const std::string& key) const override { return value<WallTime>(key); }

    [[nodiscard]] std::optional<std::vector<double>> numbers(const std::string& key) const override {
        return value<std::vector<double>>(key);
    }

    [[nodiscard]] std::uint64_t revision() const override {
        const std::scoped_lock guard(m_lock);
        if (values != m_known) {
            m_known = values;
            ++m_revision;
        }
        return m_revision;
    }

    bool setBoolean(const std::string& key, bool value) override { return set(key, value); }

    bool setTexts(const std::string& key, const Texts& value) override { return set(key, value); }

    bool setDate(const std::string& key, WallTime value) override { return set(key, value); }

    bool setNumbers(const std::string& key, const std::vector<double>& value) override { return set(key, value); }

    std::map<std::string, Value> values;
    std::vector<std::string> keysSet;  ///< every key a set was asked for, in order
    bool failsSaving = false;
    mutable std::atomic<int> textQuestions = 0;

private:
    template <typename T>
    [[nodiscard]] std::optional<T> value(const std::string& key) const {
        const std::scoped_lock guard(m_lock);
        const auto found = values.find(key);
        if (found == values.end() || !std::holds_alternative<T>(found->second)) {
            return std::nullopt;
        }
        return std::get<T>(found->second);
    }

    bool set(const std::string& key, Value value) {
        const std::scoped_lock guard(m_lock);
        values[key] = std::move(value);
        keysSet.push_back(key);
        return !failsSaving;
    }

    mutable std::mutex m_lock;
    mutable std::map<std::string, Value> m_known;  ///< values when revision() was asked last
    mutable std::uint64_t m_revision = 0;
};

}  // namespace kestrune
