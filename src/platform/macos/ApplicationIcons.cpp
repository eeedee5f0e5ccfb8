#include "platform/macos/ApplicationIcons.h"

#include <algorithm>
#include <memory>

namespace kestrune {

ApplicationIcon ApplicationIcons::of(const RunningApplication& application, const Encode& encode) {
    Key key{application.executable, application.localizedName};
    const auto kept =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.key == key; });
    if (kept != m_entries.end()) {
        m_entries.splice(m_entries.begin(), m_entries, kept);
        return m_entries.front().icon;
    }
    std::string png = encode();
    if (png.empty()) {
        return {};
    }
    m_entries.push_front({std::move(key), {{}, std::make_shared<const std::string>(std::move(png))}});
    if (m_entries.size() > m_most) {
        m_entries.pop_back();
    }
    return m_entries.front().icon;
}

}  // namespace kestrune
