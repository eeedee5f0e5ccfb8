#pragma once

#include <QString>

namespace kestrune {

struct RunningItem;

/// Whether item is what somebody means who types text: a part of its name, the start of one of its endpoints or ports
/// ("3000", ":3000", "127.0"), or its process identifier. An empty text means everything.
[[nodiscard]] bool matchesPortSearch(const RunningItem& item, const QString& text);

}  // namespace kestrune
