#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <optional>
#include <string>
#include <vector>

#include "platform/Preferences.h"

/// How a setting looks in the file. Any thread.
namespace kestrune::preference_json {

/// The settings in a file's bytes; nothing when they are not one JSON object.
[[nodiscard]] std::optional<QJsonObject> parsed(const std::string& bytes);

[[nodiscard]] std::string written(const QJsonObject& values);

/// key as the file spells it; a key that is not UTF-8 is spelled with replacement characters.
[[nodiscard]] QString keyOf(const std::string& key);

[[nodiscard]] QJsonValue valueOf(const Preferences::Texts& texts);
[[nodiscard]] QJsonValue valueOf(WallTime date);
[[nodiscard]] QJsonValue valueOf(const std::vector<double>& numbers);

/// Nothing when the value is of another type. Elements that are no texts are left out of a list
/// that holds texts.
[[nodiscard]] std::optional<bool> booleanIn(const QJsonValue& value);
[[nodiscard]] std::optional<Preferences::Texts> textsIn(const QJsonValue& value);
[[nodiscard]] std::optional<WallTime> dateIn(const QJsonValue& value);
[[nodiscard]] std::optional<std::vector<double>> numbersIn(const QJsonValue& value);

}  // namespace kestrune::preference_json
