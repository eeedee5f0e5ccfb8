#pragma once

/// Where the store's settings lie in Preferences.
namespace kestrune::PreferenceKeys {

inline constexpr const char* exclusions = "kestrune_exclusions";                ///< texts: paths
inline constexpr const char* savedSelection = "kestrune_saved_selection";       ///< texts: paths
inline constexpr const char* scanReminders = "kestrune_scan_reminders";         ///< boolean
inline constexpr const char* lastScanReminder = "kestrune_last_scan_reminder";  ///< date

}  // namespace kestrune::PreferenceKeys
