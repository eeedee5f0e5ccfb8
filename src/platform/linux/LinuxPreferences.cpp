#include "platform/linux/LinuxPreferences.h"

#include <QJsonObject>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "platform/PreferenceSuite.h"
#include "platform/linux/PreferenceJson.h"

namespace kestrune {

namespace {

constexpr const char* standardName = "preferences";

enum class FileState { usable, missing, unusable };

void overlay(QJsonObject& values, const QJsonObject& with) {
    for (auto value = with.begin(); value != with.end(); ++value) {
        values.insert(value.key(), value.value());
    }
}

}  // namespace

/// What is known of the file, and what this session set and could not save. Used under the lock.
struct LinuxPreferences::Values {
    std::uint64_t changes = 0;  ///< 0 until the file was read first
    QJsonObject all;
    QJsonObject unsaved;

    /// Takes the file's values; keeps the known ones when there is no file, or none that can be used.
    FileState load(const FileStore& files, const std::string& path) {
        ++changes;
        const FileContent content = files.read(path, fileBytesAtMost);
        if (!content.bytes) {
            return content.failure == ReadFailure::missing ? FileState::missing : FileState::unusable;
        }
        auto fresh = preference_json::parsed(*content.bytes);
        if (!fresh) {
            return FileState::unusable;
        }
        all = *std::move(fresh);
        overlay(all, unsaved);
        return FileState::usable;
    }

    void loadOnce(const FileStore& files, const std::string& path) {
        if (changes == 0) {
            load(files, path);
        }
    }

    QJsonValue value(const FileStore& files, const std::string& path, const std::string& key) {
        loadOnce(files, path);
        return all.value(preference_json::keyOf(key));
    }

    bool set(FileStore& files, const std::string& path, const std::string& key, const QJsonValue& value) {
        unsaved.insert(preference_json::keyOf(key), value);
        const FileState state = load(files, path);
        overlay(all, unsaved);
        const std::string bytes = preference_json::written(all);
        if (bytes.size() > fileBytesAtMost || (state == FileState::unusable && !files.setAside(path)) ||
            !files.replace(path, bytes)) {
            return false;
        }
        unsaved = {};
        return true;
    }
};

LinuxPreferences::LinuxPreferences(std::string path, FileStore& files)
    : m_path(std::move(path)), m_files(files), m_values(std::make_unique<Values>()) {
}

LinuxPreferences::~LinuxPreferences() = default;

std::string LinuxPreferences::standardPath(const std::string& configHome, const std::optional<std::string>& suite) {
    if (suite && !PreferenceSuite::isPlainName(*suite)) {
        std::abort();
    }
    return configHome + "/kestrune/" + suite.value_or(standardName) + ".json";
}

std::optional<bool> LinuxPreferences::boolean(const std::string& key) const {
    const std::scoped_lock guard(m_lock);
    return preference_json::booleanIn(m_values->value(m_files, m_path, key));
}

std::optional<Preferences::Texts> LinuxPreferences::texts(const std::string& key) const {
    const std::scoped_lock guard(m_lock);
    return preference_json::textsIn(m_values->value(m_files, m_path, key));
}

std::optional<WallTime> LinuxPreferences::date(const std::string& key) const {
    const std::scoped_lock guard(m_lock);
    return preference_json::dateIn(m_values->value(m_files, m_path, key));
}

std::optional<std::vector<double>> LinuxPreferences::numbers(const std::string& key) const {
    const std::scoped_lock guard(m_lock);
    return preference_json::numbersIn(m_values->value(m_files, m_path, key));
}

std::uint64_t LinuxPreferences::revision() const {
    const std::scoped_lock guard(m_lock);
    m_values->loadOnce(m_files, m_path);
    return m_values->changes;
}

bool LinuxPreferences::setBoolean(const std::string& key, bool value) {
    const std::scoped_lock guard(m_lock);
    return m_values->set(m_files, m_path, key, value);
}

bool LinuxPreferences::setTexts(const std::string& key, const Texts& value) {
    const std::scoped_lock guard(m_lock);
    return m_values->set(m_files, m_path, key, preference_json::valueOf(value));
}

bool LinuxPreferences::setDate(const std::string& key, WallTime value) {
    const std::scoped_lock guard(m_lock);
    return std::isfinite(value.time_since_epoch().count()) &&
           m_values->set(m_files, m_path, key, preference_json::valueOf(value));
}

bool LinuxPreferences::setNumbers(const std::string& key, const std::vector<double>& value) {
    const std::scoped_lock guard(m_lock);
    const bool allFinite = std::all_of(value.begin(), value.end(), [](double number) { return std::isfinite(number); });
    return allFinite && m_values->set(m_files, m_path, key, preference_json::valueOf(value));
}

}  // namespace kestrune
