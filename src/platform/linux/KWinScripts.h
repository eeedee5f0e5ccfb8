#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The scripts that KWin runs for us, and what they report, as pure functions. They keep to what Plasma 5.2x and
/// Plasma 6 have in common: what was a "client" is a "window" now. Any thread.
namespace kestrune::KWinScripts {

/// An application's window, as the listing script reports it.
struct Window {
    QString id;  ///< KWin's own, "{…}"
    std::int32_t pid = 0;
    std::vector<std::string> names;  ///< the .desktop file's id and the window class, as far as there are any
    bool isActive = false;
    bool isRegular = false;  ///< no dialog, and in the taskbar
    /// It speaks Wayland itself. Others reach KWin through the X server, and closing one of those that does not take
    /// part in WM_DELETE_WINDOW cuts its connection.
    bool isNative = false;

    bool operator==(const Window&) const = default;
};

/// Reports all windows at once and whenever one comes, goes or gets the focus, by a call of Report with one text.
[[nodiscard]] QString listing(const QString& service, const QString& path, const QString& interface);

/// Asks the windows with these ids to close, as their close buttons would.
[[nodiscard]] QString closing(const QStringList& ids);

/// A longer report, in UTF-16 units, is none.
inline constexpr qsizetype longestReport = qsizetype{1} << 20U;

/// More windows of a report are not looked at.
inline constexpr std::size_t mostWindows = 1'024;

/// Nothing for what the listing script cannot have reported.
[[nodiscard]] std::optional<std::vector<Window>> parseReport(const QString& report);

}  // namespace kestrune::KWinScripts
