#include "ui/RunningText.h"

#include <QStringList>

#include "ui/UiText.h"
#include "workspace/ExplorerListing.h"
#include "workspace/ReadableText.h"
#include "workspace/RunningItem.h"

namespace kestrune::RunningText {

QString name(const RunningItem& item) {
    return shown(ReadableText::processName(item.name, item.executable, item.id));
}

QString memory(std::int64_t megabytes) {
    return translated("%1 MB", {shown(ExplorerListing::grouped(megabytes))});
}

QString cpu(const std::string& percent) {
    if (percent.empty()) {
        return {};
    }
    const std::size_t point = percent.find('.');
    const QString figure =
        point == std::string::npos
            ? shown(percent)
            : translated("%1.%2", {shown(percent.substr(0, point)), shown(percent.substr(point + 1))});
    return translated("%1% CPU", {figure});
}

QString ports(const std::vector<std::string>& listeners) {
    QStringList all;
    for (const std::string& listener : listeners) {
        all.append(shown(listener));
    }
    return all.join(QStringLiteral(", "));
}

QString identifier(std::int32_t pid) {
    return translated("PID %1", {QString::number(pid)});
}

}  // namespace kestrune::RunningText
