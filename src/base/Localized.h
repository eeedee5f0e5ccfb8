#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace kestrune {

/// Looks a text up in the user's language. Any thread, once set; the answer lives as long as the program.
struct Translation {
    /// english itself where there is no translation of it.
    const char* (*text)(const char* english) = nullptr;

    /// The form for count; english forms where there is no translation.
    const char* (*plural)(const char* one, const char* many, unsigned long count) = nullptr;
};

/// Marks a text of a table for the tool which collects the texts. It stays English there; localized() gives it where it
/// is shown.
[[nodiscard]] constexpr const char* localizable(const char* english) {
    return english;
}

/// Once, before the first text is shown and before other threads start. Until then everything is English.
void setTranslation(const Translation& translation);

/// A text of the program in the user's language. english is its own key: a literal, or one that localizable() marked,
/// so that the tool which collects the texts finds it. Any thread.
[[nodiscard]] std::string localized(const char* english);

/// The same for a text that localizable() marked.
[[nodiscard]] std::string localized(std::string_view english);

/// The same with %1 to %9 replaced by arguments, each taken as it stands.
[[nodiscard]] std::string localized(const char* english, std::initializer_list<std::string> arguments);

/// The form that count takes in the user's language, %1 being replaced by count.
[[nodiscard]] std::string localizedCount(const char* one, const char* many, std::int64_t count);

/// The same with %1 to %9 replaced by arguments, for a count that is written otherwise or is not the only argument.
[[nodiscard]] std::string localizedCount(const char* one, const char* many, std::int64_t count,
                                         std::initializer_list<std::string> arguments);

/// text with %1 to %9 replaced by arguments; a mark without an argument stays.
[[nodiscard]] std::string withArguments(std::string_view text, std::span<const std::string> arguments);

}  // namespace kestrune
