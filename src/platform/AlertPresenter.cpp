#include "platform/AlertPresenter.h"

namespace kestrune {

std::string Alert::informativeText() const {
    std::string result;
    for (const auto& item : items) {
        const std::string size = item.size.empty() ? "" : " — " + item.size;
        result += (result.empty() ? "• " : "\n• ") + item.title + size + "\n  " + item.subtitle;
    }
    if (!items.empty() && !text.empty()) {
        result += "\n\n";
    }
    return result + text;
}

}  // namespace kestrune
