#include "ui/MessageTone.h"

namespace kestrune {

namespace {

bool holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

}  // namespace

Tone toneOf(std::string_view message) {
    if (holds(message, "couldn't be saved")) {
        return Tone::danger;
    }
    if (message.starts_with("Moved ")) {
        return holds(message, ". 0 failed.") && !holds(message, "stopped") ? Tone::success : Tone::warning;
    }
    const bool refused = message.starts_with("Close these apps") || message.starts_with("Finish a new scan");
    const bool failed = holds(message, "ouldn't") || holds(message, "ouldn’t") || holds(message, "no longer");
    return refused || failed ? Tone::warning : Tone::info;
}

}  // namespace kestrune
