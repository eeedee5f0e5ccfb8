#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kestrune {

enum class AlertStyle { informational, warning };

/// One line of what an action will touch.
struct AlertItem {
    std::string title;
    std::string size;  ///< empty: not told
    std::string subtitle;

    bool operator==(const AlertItem&) const = default;
};

/// A modal question or statement. All texts are plain.
struct Alert {
    AlertStyle style = AlertStyle::informational;
    std::string symbol = "info.circle";
    std::string messageText;
    std::vector<AlertItem> items;  ///< shown above the text, one block each
    std::string text;
    std::vector<std::string> buttons = {"OK"};  ///< the first is the default; closing the alert answers the last

    /// Everything below the message as one text: a block "• title — size" (without " — size" where none is told), line
    /// break, two spaces, subtitle for each item, then, after an empty line, text.
    [[nodiscard]] std::string informativeText() const;

    bool operator==(const Alert&) const = default;
};

class AlertPresenter {
public:
    AlertPresenter() = default;
    AlertPresenter(const AlertPresenter&) = delete;
    AlertPresenter& operator=(const AlertPresenter&) = delete;
    virtual ~AlertPresenter() = default;

    /// Shows alert and waits for the answer: the index of the button pressed. The event loop goes on meanwhile, so the
    /// caller must look again at what it relied on. Main thread.
    [[nodiscard]] virtual std::size_t present(const Alert& alert) = 0;
};

}  // namespace kestrune
