#include "workspace/ActivityLog.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/Text.h"

namespace kestrune::ActivityLog {

namespace {

using Json = nlohmann::ordered_json;

// The log counts from 2001-01-01 00:00:00 UTC.
constexpr Seconds referenceDate{978'307'200};

// 100 entries with a path and a few sentences each stay far below; whatever is larger is not our file.
constexpr std::size_t maxBytes = 4U << 20U;

// An entry is two levels deep. The limit keeps a hostile file from costing more memory than its size is worth.
constexpr int maxDepth = 16;

bool isTooDeep(std::string_view bytes) {
    int depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (inText) {
            i += c == '\\' ? 1 : 0;
            inText = c != '"';
        } else if (c == '"') {
            inText = true;
        } else if (c == '[' || c == '{') {
            if (++depth > maxDepth) {
                return true;
            }
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

// text as a UUID in canonical upper-case form.
std::optional<std::string> canonicalId(std::string text) {
    if (text.size() != 36) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        char& c = text[i];
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        const bool digit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
        if (hyphen ? c != '-' : !digit) {
            return std::nullopt;
        }
        if (c >= 'a') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

Json encoded(const ActivityEntry& entry) {
    Json object = Json::object();
    object["id"] = entry.id;
    object["date"] = (entry.date.time_since_epoch() - referenceDate).count();
    object["title"] = entry.title;
    object["detail"] = entry.detail;
    if (entry.trashPath && isValidUtf8(*entry.trashPath)) {
        object["trashPath"] = *entry.trashPath;
    }
    object["failed"] = entry.failed;
    return object;
}

// The value under key when object has one that Holds says is of the right type.
const Json* member(const Json& object, const char* key, bool (Json::*holds)() const noexcept) {
    const auto found = object.find(key);
    return found != object.end() && ((*found).*holds)() ? &*found : nullptr;
}

std::optional<ActivityEntry> decodedEntry(const Json& object) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    const Json* id = member(object, "id", &Json::is_string);
    const Json* date = member(object, "date", &Json::is_number);
    const Json* title = member(object, "title", &Json::is_string);
    const Json* detail = member(object, "detail", &Json::is_string);
    const Json* failed = member(object, "failed", &Json::is_boolean);
    const auto trashPath = object.find("trashPath");
    const bool hasTrashPath = trashPath != object.end() && !trashPath->is_null();
    if (id == nullptr || date == nullptr || title == nullptr || detail == nullptr || failed == nullptr ||
        (hasTrashPath && !trashPath->is_string())) {
        return std::nullopt;
    }
    auto uuid = canonicalId(id->get<std::string>());
    if (!uuid) {
        return std::nullopt;
    }
    return ActivityEntry{std::move(*uuid),
                         WallTime{referenceDate + Seconds{date->get<double>()}},
                         title->get<std::string>(),
                         detail->get<std::string>(),
                         hasTrashPath ? std::optional(trashPath->get<std::string>()) : std::nullopt,
                         failed->get<bool>()};
}

}  // namespace

std::string path(const std::string& home) {
    return home + "/Library/Application Support/Kestrune/activity.json";
}

std::vector<ActivityEntry> withEntry(std::vector<ActivityEntry> entries, const ActivityEntry& entry) {
    entries.insert(entries.begin(), entry);
    if (entries.size() > maxEntries) {
        entries.resize(maxEntries);
    }
    return entries;
}

std::string encode(const std::vector<ActivityEntry>& entries) {
    Json array = Json::array();
    for (const auto& entry : entries) {
        array.push_back(encoded(entry));
    }
    return array.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<std::vector<ActivityEntry>> decode(std::string_view bytes) {
    if (bytes.size() > maxBytes || isTooDeep(bytes)) {
        return std::nullopt;
    }
    const Json array = Json::parse(bytes.begin(), bytes.end(), nullptr, false);
    if (!array.is_array()) {
        return std::nullopt;
    }
    std::vector<ActivityEntry> entries;
    for (const auto& object : array) {
        auto entry = decodedEntry(object);
        if (!entry) {
            return std::nullopt;
        }
        entries.push_back(std::move(*entry));
    }
    return entries;
}

std::vector<ActivityEntry> load(const FileStore& files, const std::string& home) {
    const FileContent content = files.read(path(home), maxBytes);
    auto entries = content.bytes ? decode(*content.bytes) : std::nullopt;
    if (!entries) {
        return {};
    }
    entries->resize(std::min(entries->size(), maxEntries));
    return std::move(*entries);
}

bool save(FileStore& files, const std::string& home, const std::vector<ActivityEntry>& entries) {
    return files.replace(path(home), encode(entries));
}

}  // namespace kestrune::ActivityLog
