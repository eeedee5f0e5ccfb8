#include "ui/PortSearch.h"

#include <algorithm>

#include "ui/UiText.h"
#include "workspace/RunningItem.h"

namespace kestrune {

bool matchesPortSearch(const RunningItem& item, const QString& text) {
    const QString wanted = text.simplified();
    if (wanted.isEmpty() || shown(item.name).contains(wanted, Qt::CaseInsensitive) ||
        wanted == QString::number(item.id)) {
        return true;
    }
    const QString port = wanted.startsWith(QLatin1Char(':')) ? wanted.mid(1) : wanted;
    return std::any_of(item.listeners.begin(), item.listeners.end(), [&](const std::string& listener) {
        const QString endpoint = shown(listener);
        const QString ownPort = endpoint.mid(endpoint.lastIndexOf(QLatin1Char(':')) + 1);
        return endpoint.startsWith(wanted, Qt::CaseInsensitive) || (!port.isEmpty() && ownPort.startsWith(port));
    });
}

}  // namespace kestrune
