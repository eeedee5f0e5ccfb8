#include "platform/AlertPresenter.h"

namespace kestrune {

std::string Alert::informativeText() const {
    std::string result;
    for (const auto& item : items) {
        result += (result.empty() ? "• " : "\n• ") + item.title + " — " + item.size + "\n  " + item.subtitle;
    }
    if (!items.empty() && !text.empty()) {
        result += "\n\n";
    }
    return result + text;
}

}  // namespace kestrune
