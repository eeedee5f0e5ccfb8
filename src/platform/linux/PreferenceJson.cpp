#include "platform/linux/PreferenceJson.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QString>

#include "base/Text.h"

namespace kestrune::preference_json {

namespace {

QString bytesKey() {
    return QStringLiteral("bytes");
}

QJsonValue valueOf(const std::string& text) {
    const QByteArray bytes = QByteArray::fromStdString(text);
    const QString string = QString::fromUtf8(bytes);
    // Not every well-formed text comes back unchanged: a leading byte order mark, for one, does not.
    if (isValidUtf8(text) && string.toUtf8() == bytes) {
        return string;
    }
    return QJsonObject{{bytesKey(), QString::fromLatin1(bytes.toPercentEncoding(QByteArrayLiteral("/ ")))}};
}

std::optional<std::string> textIn(const QJsonValue& value) {
    if (value.isString()) {
        return value.toString().toStdString();
    }
    const QJsonValue bytes = value.toObject().value(bytesKey());
    if (!bytes.isString()) {
        return std::nullopt;
    }
    return QByteArray::fromPercentEncoding(bytes.toString().toLatin1()).toStdString();
}

}  // namespace

std::optional<QJsonObject> parsed(const std::string& bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(bytes));
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

std::string written(const QJsonObject& values) {
    return QJsonDocument(values).toJson(QJsonDocument::Indented).toStdString();
}

QString keyOf(const std::string& key) {
    return QString::fromStdString(key);
}

QJsonValue valueOf(const Preferences::Texts& texts) {
    QJsonArray array;
    for (const std::string& text : texts) {
        array.append(valueOf(text));
    }
    return array;
}

QJsonValue valueOf(WallTime date) {
    return date.time_since_epoch().count();
}

QJsonValue valueOf(const std::vector<double>& numbers) {
    QJsonArray array;
    for (const double number : numbers) {
        array.append(number);
    }
    return array;
}

std::optional<bool> booleanIn(const QJsonValue& value) {
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<Preferences::Texts> textsIn(const QJsonValue& value) {
    const QJsonArray elements = value.toArray();
    Preferences::Texts texts;
    // One broken element must not take the others with it: they protect something.
    for (const QJsonValue element : elements) {
        if (std::optional<std::string> text = textIn(element)) {
            texts.push_back(*std::move(text));
        }
    }
    const bool isOfTexts = value.isArray() && (elements.isEmpty() || !texts.empty());
    return isOfTexts ? std::optional(std::move(texts)) : std::nullopt;
}

std::optional<WallTime> dateIn(const QJsonValue& value) {
    return value.isDouble() ? std::optional(WallTime(Seconds(value.toDouble()))) : std::nullopt;
}

std::optional<std::vector<double>> numbersIn(const QJsonValue& value) {
    if (!value.isArray()) {
        return std::nullopt;
    }
    std::vector<double> numbers;
    for (const QJsonValue element : value.toArray()) {
        if (!element.isDouble()) {
            return std::nullopt;
        }
        numbers.push_back(element.toDouble());
    }
    return numbers;
}

}  // namespace kestrune::preference_json
