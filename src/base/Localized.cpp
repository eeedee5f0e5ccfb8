#include "base/Localized.h"

#include <cstddef>

namespace kestrune {

namespace {

Translation& current() {
    static Translation translation;
    return translation;
}

const char* countForm(const char* one, const char* many, std::int64_t count) {
    if (current().plural != nullptr) {
        return current().plural(one, many, static_cast<unsigned long>(count));
    }
    return count == 1 ? one : many;
}

}  // namespace

void setTranslation(const Translation& translation) {
    current() = translation;
}

std::string localized(const char* english) {
    // An empty text is the key of a catalogue's own description.
    return current().text == nullptr || *english == '\0' ? english : current().text(english);
}

std::string localized(std::string_view english) {
    return localized(std::string(english).c_str());
}

std::string localized(const char* english, std::initializer_list<std::string> arguments) {
    return withArguments(localized(english), {arguments.begin(), arguments.size()});
}

std::string localizedCount(const char* one, const char* many, std::int64_t count) {
    return localizedCount(one, many, count, {std::to_string(count)});
}

std::string localizedCount(const char* one, const char* many, std::int64_t count,
                           std::initializer_list<std::string> arguments) {
    return withArguments(countForm(one, many, count), {arguments.begin(), arguments.size()});
}

std::string withArguments(std::string_view text, std::span<const std::string> arguments) {
    std::string filled;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool isMark = text[place] == '%' && place + 1 < text.size() && text[place + 1] >= '1' &&
                            static_cast<std::size_t>(text[place + 1] - '0') <= arguments.size();
        if (isMark) {
            filled += arguments[static_cast<std::size_t>(text[place + 1] - '1')];
            ++place;
        } else {
            filled += text[place];
        }
    }
    return filled;
}

}  // namespace kestrune
