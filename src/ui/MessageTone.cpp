#include "ui/MessageTone.h"

#include <algorithm>
#include <array>

#include "base/Localized.h"

namespace kestrune {

namespace {

/// A sentence of the store's and how it is meant. In the table's order: the first that fits counts.
struct Sentence {
    const char* text;
    Tone tone;
};

constexpr std::array<Sentence, 18> sentences{{
    {localizable("Activity is visible for this session, but couldn't be saved."), Tone::danger},
    {localizable("This setting works for this session, but couldn't be saved."), Tone::danger},
    {localizable("Moved %1 items to Trash. %2 failed. Cleanup stopped; remaining items were kept."), Tone::warning},
    {localizable("Moved %1 items to Trash. 0 failed."), Tone::success},
    {localizable("Moved %1 items to Trash. %2 failed."), Tone::warning},
    {localizable("Close these apps before cleaning their files: %1"), Tone::warning},
    {localizable("Finish a new scan before cleaning."), Tone::warning},
    {localizable("This item is no longer at its recorded Trash location. It may have been restored or emptied."),
     Tone::warning},
    {localizable("The help page couldn't be opened."), Tone::warning},
    {localizable("The update help couldn't be opened."), Tone::warning},
    {localizable("The release notes couldn't be opened."), Tone::warning},
    {localizable("Something else is at %1 now. Rename or move it first, then try again."), Tone::warning},
    {localizable("The folder %1 is gone or leads elsewhere now. Make it again, then try again."), Tone::warning},
    {localizable("The folder %1 is on another disk now. Move the item with your file manager instead."), Tone::warning},
    {localizable("The Trash doesn't say where this item came from. Open the Trash and move the item yourself."),
     Tone::warning},
    {localizable("This item is protected or has changed, so it wasn't put back. Open the Trash to inspect it."),
     Tone::warning},
    {localizable("Couldn't put this item back: %1"), Tone::warning},
    {localizable("This move couldn't be confirmed or undone. Look for the item in the Trash and in the folder it came "
                 "from."),
     Tone::warning},
}};

bool isArgument(std::string_view text, std::size_t place) {
    return text[place] == '%' && place + 1 < text.size() && text[place + 1] >= '1' && text[place + 1] <= '9';
}

/// Whether message begins with pattern, whatever stands for its %1 to %9.
bool beginsWith(std::string_view message, std::string_view pattern) {
    bool anywhere = false;
    while (!pattern.empty()) {
        std::size_t end = 0;
        while (end < pattern.size() && !isArgument(pattern, end)) {
            ++end;
        }
        const std::size_t found = message.find(pattern.substr(0, end));
        if (found == std::string_view::npos || (!anywhere && found > 0)) {
            return false;
        }
        message.remove_prefix(found + end);
        pattern.remove_prefix(std::min(end + 2, pattern.size()));
        anywhere = true;
    }
    return true;
}

}  // namespace

Tone toneOf(std::string_view message) {
    const auto* const found = std::find_if(sentences.begin(), sentences.end(), [message](const Sentence& sentence) {
        return beginsWith(message, localized(sentence.text));
    });
    return found == sentences.end() ? Tone::info : found->tone;
}

}  // namespace kestrune
