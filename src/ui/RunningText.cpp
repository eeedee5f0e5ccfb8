#include "ui/RunningText.h"

#include <QLocale>
#include <QStringList>

#include "ui/UiText.h"
#include "workspace/ReadableText.h"
#include "workspace/RunningItem.h"

namespace kestrune::RunningText {

QString name(const RunningItem& item) {
    return shown(ReadableText::processName(item.name, item.executable, item.id));
}

QString memory(std::int64_t megabytes) {
    // The texts around the figure are English on every system.
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    return QStringLiteral("%1 MB").arg(english.toString(static_cast<qlonglong>(megabytes)));
}

QString cpu(const std::string& percent) {
    return percent.empty() ? QString() : QStringLiteral("%1% CPU").arg(shown(percent));
}

QString ports(const std::vector<std::string>& listeners) {
    QStringList all;
    for (const std::string& listener : listeners) {
        all.append(shown(listener));
    }
    return all.join(QStringLiteral(", "));
}

QString identifier(std::int32_t pid) {
    return QStringLiteral("PID %1").arg(pid);
}

}  // namespace kestrune::RunningText
