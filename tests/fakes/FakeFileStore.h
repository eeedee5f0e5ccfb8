#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileStore.h"

namespace kestrune {

/// Files in memory. Set a `fails…` flag to have that operation change nothing and answer false.
class FakeFileStore final : public FileStore {
public:
    [[nodiscard]] FileContent read(const std::string& path, std::size_t maxBytes) const override {
        const std::scoped_lock guard(m_lock);
        ++reads;
        if (failsReading) {
            return {std::nullopt, ReadFailure::unreadable};
        }
        const auto found = files.find(path);
        if (found == files.end()) {
            return {std::nullopt, ReadFailure::missing};
        }
        if (found->second.size() > maxBytes) {
            return {std::nullopt, ReadFailure::tooLarge};
        }
        return {found->second, ReadFailure::missing};
    }

    [[nodiscard]] bool replace(const std::string& path, std::string_view bytes) override {
        const std::scoped_lock guard(m_lock);
        ++replaceAttempts;
        if (failsReplacing) {
            return false;
        }
        files[path] = std::string(bytes);
        return true;
    }

    [[nodiscard]] bool setAside(const std::string& path) override {
        const std::scoped_lock guard(m_lock);
        const auto found = files.find(path);
        if (failsSettingAside || found == files.end()) {
            return false;
        }
        int number = 1;
        while (files.count(path + ".unreadable-" + std::to_string(number)) > 0) {
            ++number;
        }
        files[path + ".unreadable-" + std::to_string(number)] = found->second;
        files.erase(path);
        return true;
    }

    std::map<std::string, std::string> files;
    bool failsReading = false;  ///< the file is there and cannot be read
    bool failsReplacing = false;
    bool failsSettingAside = false;
    mutable int reads = 0;
    int replaceAttempts = 0;

private:
    mutable std::mutex m_lock;
};

}  // namespace kestrune
