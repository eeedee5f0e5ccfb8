#pragma once

#include <QString>
#include <string>

namespace kestrune {

struct RunningItem;

/// Whether item is what somebody means who types text: a part of its name, the start of one of its endpoints or ports
/// ("3000", ":3000", "127.0"), or its process identifier. An empty text means everything.
[[nodiscard]] bool matchesPortSearch(const RunningItem& item, const QString& text);

/// Whether endpoint is one that text means. An empty text means none.
[[nodiscard]] bool isSearchedEndpoint(const std::string& endpoint, const QString& text);

}  // namespace kestrune
