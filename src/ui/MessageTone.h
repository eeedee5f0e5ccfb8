#pragma once

#include <string_view>

namespace kestrune {

enum class Tone { info, success, warning, danger };

/// How an outcome sentence of the store is shown: a finished move in the colour of success, a refusal or a failure in
/// the colour of warning, a loss in the colour of danger, anything else as plain information.
[[nodiscard]] Tone toneOf(std::string_view message);

}  // namespace kestrune
