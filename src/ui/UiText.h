#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kestrune {

/// text for the screen: bytes that are not UTF-8 become replacement characters, and line breaks and other control
/// characters of foreign names become spaces so that one line stays one line.
[[nodiscard]] QString shown(std::string_view text);

/// text for a place that takes "&" as the mark of a mnemonic.
[[nodiscard]] QString withoutMnemonic(QString text);

}  // namespace kestrune
