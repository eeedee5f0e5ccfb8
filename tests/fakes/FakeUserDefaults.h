#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/macos/UserDefaults.h"

namespace kestrune {

/// What the system keeps for every program, and survives this one.
struct FakeDefaultsDatabase {
    std::map<std::string, DefaultsValue> values;
    bool failsSaving = false;
};

/// Reads and writes a database: what was set is saved by synchronize, and forgotten when that fails.
class FakeUserDefaults final : public UserDefaults {
public:
    explicit FakeUserDefaults(FakeDefaultsDatabase& defaultsDatabase) : database(defaultsDatabase) {}

    [[nodiscard]] DefaultsValue value(const std::string& key) const override {
        const std::scoped_lock guard(m_lock);
        ++reads;
        const auto found = database.values.find(key);
        return found == database.values.end() ? DefaultsValue() : found->second;
    }

    void setValue(const std::string& key, const DefaultsValue& value) override {
        const std::scoped_lock guard(m_lock);
        m_pending[key] = value;
        sets.push_back(key);
    }

    [[nodiscard]] bool synchronize() override {
        const std::scoped_lock guard(m_lock);
        const auto pending = std::exchange(m_pending, {});
        if (database.failsSaving) {
            return false;
        }
        for (const auto& [key, value] : pending) {
            database.values[key] = value;
        }
        return true;
    }

    void watch(const std::string& key, std::function<void()> changed) override {
        const std::scoped_lock guard(m_lock);
        watched.emplace(key, std::move(changed));
    }

    /// As another program would.
    void changeFromOutside(const std::string& key, const DefaultsValue& value) {
        database.values[key] = value;
        const auto [first, last] = watched.equal_range(key);
        for (auto observer = first; observer != last; ++observer) {
            observer->second();
        }
    }

    FakeDefaultsDatabase& database;
    std::vector<std::string> sets;  ///< the keys, in the order they came
    std::multimap<std::string, std::function<void()>> watched;
    mutable int reads = 0;

private:
    mutable std::mutex m_lock;
    std::map<std::string, DefaultsValue> m_pending;
};

}  // namespace kestrune
