#include "ui/UiText.h"

namespace kestrune {

QString shown(std::string_view text) {
    QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& character : result) {
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator) {
            character = QLatin1Char(' ');
        }
    }
    return result;
}

QString withoutMnemonic(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace kestrune
