#include "ui/PortSearch.h"

#include <algorithm>

#include "ui/RunningText.h"
#include "ui/UiText.h"
#include "workspace/RunningItem.h"

namespace kestrune {

bool isSearchedEndpoint(const std::string& endpoint, const QString& text) {
    const QString wanted = text.simplified();
    const QString port = wanted.startsWith(QLatin1Char(':')) ? wanted.mid(1) : wanted;
    const QString whole = shown(endpoint);
    const QString ownPort = whole.mid(whole.lastIndexOf(QLatin1Char(':')) + 1);
    return (!wanted.isEmpty() && whole.startsWith(wanted, Qt::CaseInsensitive)) ||
           (!port.isEmpty() && ownPort.startsWith(port));
}

bool matchesPortSearch(const RunningItem& item, const QString& text) {
    const QString wanted = text.simplified();
    if (wanted.isEmpty() || RunningText::name(item).contains(wanted, Qt::CaseInsensitive) ||
        wanted == QString::number(item.id)) {
        return true;
    }
    return std::any_of(item.listeners.begin(), item.listeners.end(),
                       [&](const std::string& endpoint) { return isSearchedEndpoint(endpoint, wanted); });
}

}  // namespace kestrune
