#include "base/Localized.h"

#include <cstddef>
#include <string_view>

namespace kestrune {

namespace {

Translation& current() {
    static Translation translation;
    return translation;
}

std::string withArguments(std::string_view text, std::initializer_list<std::string> arguments) {
    std::string filled;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool isMark = text[place] == '%' && place + 1 < text.size() && text[place + 1] >= '1' &&
                            static_cast<std::size_t>(text[place + 1] - '0') <= arguments.size();
        if (isMark) {
            filled += arguments.begin()[text[place + 1] - '1'];
            ++place;
        } else {
            filled += text[place];
        }
    }
    return filled;
}

}  // namespace

void setTranslation(const Translation& translation) {
    current() = translation;
}

std::string localized(const char* english) {
    // An empty text is the key of a catalogue's own description.
    return current().text == nullptr || *english == '\0' ? english : current().text(english);
}

std::string localized(const char* english, std::initializer_list<std::string> arguments) {
    return withArguments(localized(english), arguments);
}

std::string localizedCount(const char* one, const char* many, std::int64_t count) {
    const char* form = count == 1 ? one : many;
    if (current().plural != nullptr) {
        form = current().plural(one, many, static_cast<unsigned long>(count));
    }
    return withArguments(form, {std::to_string(count)});
}

}  // namespace kestrune
