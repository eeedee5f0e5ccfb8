#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>

/// Which names stand for something that must never be ended. Pure functions.
namespace kestrune::AppProtection {

/// What the names of system processes, and of this program, begin with; in lower case.
inline constexpr std::array<std::string_view, 35> protectedNames{
    "windowserver", "kernel_task",       "launchd",      "opencode",
    "ravelkin",     "kestrune",          "finder",       "controlcenter",
    "dock",         "systemuiserver",    "loginwindow",  "notifyd",
    "configd",      "corebrightnessd",   "powerd",       "thermald",
    "rapportd",     "sharingd",          "locationd",    "airportd",
    "wiflagent",    "spotlight",         "mds",          "mds_stores",
    "backupd",      "applemobiledevice", "stats",        "logd",
    "syslogd",      "opendirectoryd",    "hidd",         "usbd",
    "amfid",        "syspolicyd",        "mdnsresponder"};

/// Names to compare with, however many they are.
using NameSet = std::unordered_set<std::string>;

/// True when the file name of nameOrPath begins with one of protectedNames, or when alwaysKept holds nameOrPath or its
/// file name. Both are put in lower case first, the entries of alwaysKept are not: one with capitals matches nothing.
[[nodiscard]] bool isProtected(std::string_view nameOrPath, const NameSet& alwaysKept);

/// True when an application of that name must be left alone by the actions that close several: it is protected, or
/// alwaysKept holds the name as it is, capitals included.
[[nodiscard]] bool sparesApplication(const std::string& localizedName, const NameSet& alwaysKept);

}  // namespace kestrune::AppProtection
