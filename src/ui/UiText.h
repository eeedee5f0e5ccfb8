#pragma once

#include <QString>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kestrune {

/// A text of the program in the user's language, as localized() gives it.
[[nodiscard]] QString translated(const char* english);

/// The same for a text that localizable() marked.
[[nodiscard]] QString translated(std::string_view english);

/// The same with %1 to %9 replaced by arguments, each taken as it stands.
[[nodiscard]] QString translated(const char* english, std::initializer_list<QString> arguments);

/// The form that count takes in the user's language, %1 being replaced by count.
[[nodiscard]] QString translatedCount(const char* one, const char* many, std::int64_t count);

/// The same with %1 to %9 replaced by arguments, for a count that is written otherwise or is not the only argument.
[[nodiscard]] QString translatedCount(const char* one, const char* many, std::int64_t count,
                                      std::initializer_list<QString> arguments);

/// text for the screen as ReadableText::visible() makes it: one line stays one line, whatever a foreign name holds.
[[nodiscard]] QString shown(std::string_view text);

/// text like shown(), with the line breaks that it has.
[[nodiscard]] QString shownLines(std::string_view text);

/// text for a place that takes "&" as the mark of a mnemonic.
[[nodiscard]] QString withoutMnemonic(QString text);

/// text as the tooltip that shows it letter for letter: tooltips take what looks like markup for markup.
[[nodiscard]] QString asToolTip(const QString& text);

}  // namespace kestrune
