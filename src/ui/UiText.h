#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kestrune {

/// text for the screen as ReadableText::visible() makes it: one line stays one line, whatever a foreign name holds.
[[nodiscard]] QString shown(std::string_view text);

/// text for a place that takes "&" as the mark of a mnemonic.
[[nodiscard]] QString withoutMnemonic(QString text);

/// text as the tooltip that shows it letter for letter: tooltips take what looks like markup for markup.
[[nodiscard]] QString asToolTip(const QString& text);

}  // namespace kestrune
