#include "ui/UiText.h"

#include <QStringList>
#include <QTextDocument>
#include <algorithm>

#include <vector>

#include "base/Localized.h"
#include "workspace/ReadableText.h"

namespace kestrune {

namespace {

QString filled(const std::string& text, std::initializer_list<QString> arguments) {
    std::vector<std::string> utf8;
    for (const QString& argument : arguments) {
        utf8.push_back(argument.toStdString());
    }
    return QString::fromStdString(withArguments(text, utf8));
}

}  // namespace

QString translated(const char* english) {
    return QString::fromStdString(localized(english));
}

QString translated(std::string_view english) {
    return QString::fromStdString(localized(english));
}

QString translated(const char* english, std::initializer_list<QString> arguments) {
    return filled(localized(english), arguments);
}

QString translatedCount(const char* one, const char* many, std::int64_t count) {
    return QString::fromStdString(localizedCount(one, many, count));
}

QString translatedCount(const char* one, const char* many, std::int64_t count,
                        std::initializer_list<QString> arguments) {
    return filled(localizedCount(one, many, count, {}), arguments);
}

QString shown(std::string_view text) {
    return QString::fromStdString(ReadableText::visible(text));
}

QString shownLines(std::string_view text) {
    QStringList lines;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.append(shown(text.substr(start, end - start)));
        start = end + 1;
    }
    return lines.join(QLatin1Char('\n'));
}

QString withoutMnemonic(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString asToolTip(const QString& text) {
    // Escaping alone is not enough: a text without "<" in it is taken for plain, with its escapes showing.
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

}  // namespace kestrune
