#include "platform/macos/MacPreferences.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <string_view>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// The system takes a mark at the beginning of UTF-8 for no part of the text.
bool comesBackUnchanged(const std::string& text) {
    return isValidUtf8(text) && !text.starts_with(byteOrderMark) && text.find('\0') == std::string::npos;
}

DefaultsElement elementOf(const std::string& text) {
    return comesBackUnchanged(text) ? DefaultsElement(text) : DefaultsElement(DefaultsBytes{text});
}

std::optional<std::string> textIn(const DefaultsElement& element) {
    if (const auto* text = std::get_if<std::string>(&element)) {
        return *text;
    }
    const auto* data = std::get_if<DefaultsBytes>(&element);
    return data != nullptr ? std::optional(data->bytes) : std::nullopt;
}

// What an element takes in a property list, its reference included.
std::size_t sizeOf(const DefaultsElement& element) {
    constexpr std::size_t reference = 8;
    const auto* text = std::get_if<std::string>(&element);
    const auto* data = std::get_if<DefaultsBytes>(&element);
    return reference + (text != nullptr ? text->size() : 0) + (data != nullptr ? data->bytes.size() : 0);
}

bool fits(const DefaultsValue& value) {
    const auto* list = std::get_if<DefaultsList>(&value);
    const auto added = [](std::size_t size, const DefaultsElement& element) { return size + sizeOf(element); };
    return list == nullptr ||
           std::accumulate(list->begin(), list->end(), std::size_t{0}, added) <= MacPreferences::listBytesAtMost;
}

template <typename Value>
std::optional<Value> valueAs(const DefaultsValue& value) {
    const auto* typed = std::get_if<Value>(&value);
    return typed != nullptr ? std::optional(*typed) : std::nullopt;
}

}  // namespace

MacPreferences::MacPreferences(std::unique_ptr<UserDefaults> defaults) : m_defaults(std::move(defaults)) {
}

DefaultsValue MacPreferences::value(const std::string& key) const {
    const std::scoped_lock guard(m_lock);
    // Watched before it is read, so that no change goes by in between.
    if (m_watched.insert(key).second) {
        m_defaults->watch(key, [changes = m_changes] { ++*changes; });
    }
    const auto unsaved = m_unsaved.find(key);
    return unsaved != m_unsaved.end() ? unsaved->second : m_defaults->value(key);
}

std::optional<bool> MacPreferences::boolean(const std::string& key) const {
    return valueAs<bool>(value(key));
}

std::optional<Preferences::Texts> MacPreferences::texts(const std::string& key) const {
    const std::optional<DefaultsList> list = valueAs<DefaultsList>(value(key));
    if (!list) {
        return std::nullopt;
    }
    Texts texts;
    // One broken element must not take the others with it: they protect something.
    for (const DefaultsElement& element : *list) {
        if (std::optional<std::string> text = textIn(element)) {
            texts.push_back(*std::move(text));
        }
    }
    return list->empty() || !texts.empty() ? std::optional(std::move(texts)) : std::nullopt;
}

std::optional<WallTime> MacPreferences::date(const std::string& key) const {
    return valueAs<WallTime>(value(key));
}

std::optional<std::vector<double>> MacPreferences::numbers(const std::string& key) const {
    const std::optional<DefaultsList> list = valueAs<DefaultsList>(value(key));
    if (!list) {
        return std::nullopt;
    }
    std::vector<double> numbers;
    for (const DefaultsElement& element : *list) {
        const auto* number = std::get_if<double>(&element);
        if (number == nullptr) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

std::uint64_t MacPreferences::revision() const {
    return *m_changes;
}

bool MacPreferences::set(const std::string& key, DefaultsValue value) {
    const std::scoped_lock guard(m_lock);
    const bool isKept = fits(value);
    m_unsaved.insert_or_assign(key, std::move(value));
    for (const auto& [unsavedKey, unsaved] : m_unsaved) {
        if (fits(unsaved)) {
            m_defaults->setValue(unsavedKey, unsaved);
        }
    }
    const bool isSaved = m_defaults->synchronize();
    if (isSaved) {
        std::erase_if(m_unsaved, [](const auto& unsaved) { return fits(unsaved.second); });
    }
    ++*m_changes;
    return isSaved && isKept;
}

bool MacPreferences::setBoolean(const std::string& key, bool value) {
    return set(key, value);
}

bool MacPreferences::setTexts(const std::string& key, const Texts& value) {
    DefaultsList list;
    list.reserve(value.size());
    std::transform(value.begin(), value.end(), std::back_inserter(list), elementOf);
    return set(key, std::move(list));
}

bool MacPreferences::setDate(const std::string& key, WallTime value) {
    return std::isfinite(value.time_since_epoch().count()) && set(key, value);
}

bool MacPreferences::setNumbers(const std::string& key, const std::vector<double>& value) {
    const bool areFinite = std::all_of(value.begin(), value.end(), [](double number) { return std::isfinite(number); });
    return areFinite && set(key, DefaultsList(value.begin(), value.end()));
}

}  // namespace kestrune
