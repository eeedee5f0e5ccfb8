#include "platform/linux/SwayTree.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kestrune::SwayTree {

namespace {

// Refuses what is nested deeper than 1024 levels.
QJsonDocument parsed(std::string_view json) {
    return QJsonDocument::fromJson(QByteArray(json.data(), static_cast<qsizetype>(json.size())));
}

std::int32_t processIn(const QJsonObject& container) {
    const double pid = container.value(QLatin1String("pid")).toDouble();
    const bool isProcess = pid >= 1 && pid <= std::numeric_limits<std::int32_t>::max() && std::floor(pid) == pid;
    return isProcess ? static_cast<std::int32_t>(pid) : 0;
}

void addName(std::vector<std::string>& names, const QJsonValue& name) {
    if (const QString text = name.toString(); !text.isEmpty()) {
        names.push_back(text.toStdString());
    }
}

std::optional<Window> windowIn(const QJsonObject& container) {
    Window window;
    window.pid = processIn(container);
    window.container = container.value(QLatin1String("id")).toInteger();
    if (window.pid == 0 || window.container <= 0) {
        return std::nullopt;
    }
    addName(window.names, container.value(QLatin1String("app_id")));
    const QJsonObject properties = container.value(QLatin1String("window_properties")).toObject();
    addName(window.names, properties.value(QLatin1String("class")));
    addName(window.names, properties.value(QLatin1String("instance")));
    window.isFocused = container.value(QLatin1String("focused")).toBool();
    window.isNative = container.value(QLatin1String("shell")).toString() == QLatin1String("xdg_shell");
    return window;
}

// So that the first of them is the next one to be taken.
void pushReversed(std::vector<QJsonObject>& containers, const QJsonArray& children) {
    for (qsizetype i = children.size() - 1; i >= 0; --i) {
        containers.push_back(children.at(i).toObject());
    }
}

bool saysSuccess(const QJsonValue& answer) {
    return answer.toObject().value(QLatin1String("success")).toBool();
}

}  // namespace

std::vector<Window> windows(std::string_view reply) {
    std::vector<Window> found;
    std::vector<QJsonObject> containers{parsed(reply).object()};
    while (!containers.empty() && found.size() < mostWindows) {
        const QJsonObject container = containers.back();
        containers.pop_back();
        if (std::optional<Window> window = windowIn(container)) {
            found.push_back(std::move(*window));
        }
        pushReversed(containers, container.value(QLatin1String("floating_nodes")).toArray());
        pushReversed(containers, container.value(QLatin1String("nodes")).toArray());
    }
    return found;
}

std::optional<std::int32_t> focusedProcess(std::string_view event) {
    const QJsonObject object = parsed(event).object();
    const std::int32_t pid = processIn(object.value(QLatin1String("container")).toObject());
    const bool isFocus = object.value(QLatin1String("change")).toString() == QLatin1String("focus");
    return isFocus && pid > 0 ? std::optional(pid) : std::nullopt;
}

bool isSuccess(std::string_view reply) {
    const QJsonDocument document = parsed(reply);
    const QJsonArray answers = document.array();
    return saysSuccess(document.object()) || std::any_of(answers.begin(), answers.end(), saysSuccess);
}

}  // namespace kestrune::SwayTree
