#include "ui/UiText.h"

#include <QTextDocument>

#include "workspace/ReadableText.h"

namespace kestrune {

QString shown(std::string_view text) {
    return QString::fromStdString(ReadableText::visible(text));
}

QString withoutMnemonic(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString asToolTip(const QString& text) {
    // Escaping alone is not enough: a text without "<" in it is taken for plain, with its escapes showing.
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

}  // namespace kestrune
