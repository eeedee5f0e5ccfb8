#pragma once

#include <QString>

/// Release notes as text that can be shown as it stands. Pure.
namespace kestrune::PlainNotes {

inline constexpr qsizetype longest = 16 * 1024;

/// HTML without its tags, scripts and comments: paragraphs and list items on lines of their own, white space as a
/// browser has it.
[[nodiscard]] QString fromHtml(const QString& html);

/// text without what does not show or turns the writing direction, at most so many characters long.
[[nodiscard]] QString plain(const QString& text);

}  // namespace kestrune::PlainNotes
