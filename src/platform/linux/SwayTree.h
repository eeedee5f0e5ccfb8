#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What sway says about its windows, in the JSON of sway-ipc(7), as pure functions. Any thread.
namespace kestrune::SwayTree {

/// A window as GET_TREE lists it.
struct Window {
    std::int64_t container = 0;
    std::int32_t pid = 0;
    std::vector<std::string> names;  ///< the app_id, or the WM_CLASS class and instance
    bool isFocused = false;
    /// It speaks Wayland itself. Others reach sway through its X server, and closing one of those that does not take
    /// part in WM_DELETE_WINDOW cuts its connection.
    bool isNative = false;

    bool operator==(const Window&) const = default;
};

/// More windows of a reply are not looked at.
inline constexpr std::size_t mostWindows = 1'024;

/// The windows in a reply to GET_TREE, in its order: workspace by workspace, floating ones last; mostWindows of them at
/// most. Containers without a process, as of i3, which names none, are no windows.
[[nodiscard]] std::vector<Window> windows(std::string_view reply);

/// The process that a window event says has the focus now; nothing for other events.
[[nodiscard]] std::optional<std::int32_t> focusedProcess(std::string_view event);

/// True when a reply to SUBSCRIBE, or one of the commands in a reply to RUN_COMMAND, says so.
[[nodiscard]] bool isSuccess(std::string_view reply);

}  // namespace kestrune::SwayTree
