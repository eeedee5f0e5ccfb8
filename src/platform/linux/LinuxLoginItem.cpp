#include "platform/linux/LinuxLoginItem.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/LinuxAccount.h"
#include "platform/linux/LinuxFileLocation.h"
#include "platform/linux/LoginUnit.h"

namespace kestrune {

namespace {

const std::string identifier = "com.torvandelsyn.kestrune";

constexpr std::size_t longestFile = std::size_t{64} * 1024;

std::optional<mode_t> kindOf(const std::string& path) {
    struct stat status {};

    return ::lstat(path.c_str(), &status) == 0 ? std::optional(status.st_mode & S_IFMT) : std::nullopt;
}

bool isProgram(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

// What TryExec names: a path, or a name that is looked for in PATH.
bool isFound(const std::string& program) {
    if (program.find('/') != std::string::npos) {
        return isProgram(program);
    }
    const std::vector<std::string> folders = split(LinuxAccount::variable("PATH"), ':');
    return std::any_of(folders.begin(), folders.end(),
                       [&program](const std::string& folder) { return isProgram(folder + "/" + program); });
}

bool starts(const AutostartEntry::Reading& entry) {
    return entry.isEntry && !entry.isSwitchedOff && (entry.tryExec.empty() || isFound(entry.tryExec));
}

bool isRemoved(const std::string& path) {
    const auto location = locate(path);
    return location && ::unlinkat(location->folder.get(), location->name.c_str(), 0) == 0 &&
           synced(location->folder.get());
}

}  // namespace

LinuxLoginItem::LinuxLoginItem(const std::string& configHome, std::string executable, FileStore& files)
    : m_executable(std::move(executable)),
      m_entry(configHome + "/autostart/" + identifier + ".desktop"),
      m_unit(configHome + "/systemd/user/" + identifier + ".service"),
      m_link(configHome + "/systemd/user/graphical-session.target.wants/" + identifier + ".service"),
      m_files(files) {
}

bool LinuxLoginItem::isRegistered() const {
    const FileContent entry = m_files.read(m_entry, longestFile);
    return entry.bytes && starts(AutostartEntry::read(*entry.bytes));
}

bool LinuxLoginItem::setRegistered(bool on) {
    const FileContent entry = m_files.read(m_entry, longestFile);
    if (!entry.bytes && entry.failure != ReadFailure::missing) {
        return false;
    }
    if (on) {
        return registerIn(entry.bytes) && isRegistered();
    }
    return !entry.bytes || switchOff(*entry.bytes);
}

bool LinuxLoginItem::registerIn(const std::optional<std::string>& entry) {
    const std::optional<std::string> ours = AutostartEntry::textFor(m_executable);
    if (!ours || !isProgram(m_executable)) {
        return false;
    }
    if (!entry || AutostartEntry::isOurs(*entry)) {
        return m_files.replace(m_entry, *ours);
    }
    AutostartEntry::Reading reading = AutostartEntry::read(*entry);
    if (!reading.isEntry) {
        return m_files.setAside(m_entry) && m_files.replace(m_entry, *ours);
    }
    // An entry that was edited keeps everything that it can be started with.
    std::string edited = AutostartEntry::switched(*entry, true);
    if (!reading.tryExec.empty() && !isFound(reading.tryExec)) {
        edited = AutostartEntry::redirected(edited, m_executable);
    }
    return m_files.replace(m_entry, edited);
}

bool LinuxLoginItem::switchOff(const std::string& entry) {
    if (AutostartEntry::isOurs(entry) && kindOf(m_entry) == S_IFREG) {
        return isRemoved(m_entry);
    }
    return !AutostartEntry::read(entry).isEntry || m_files.replace(m_entry, AutostartEntry::switched(entry, false));
}

bool LinuxLoginItem::isAgentInstalled() const {
    return m_files.read(m_unit, longestFile).bytes && kindOf(m_link) == S_IFLNK;
}

bool LinuxLoginItem::setAgentInstalled(bool on) {
    const FileContent unit = m_files.read(m_unit, longestFile);
    if (!unit.bytes && unit.failure != ReadFailure::missing) {
        return false;
    }
    // A unit that was edited stays; only the link decides whether it is started.
    const bool isOurs = !unit.bytes || LoginUnit::isOurs(*unit.bytes);
    if (on) {
        return (!isOurs || writeUnit()) && linkUnit();
    }
    const bool isUnlinked = !kindOf(m_link) || (kindOf(m_link) == S_IFLNK && isRemoved(m_link));
    const bool isOurFile = unit.bytes && isOurs && kindOf(m_unit) == S_IFREG;
    return isUnlinked && (!isOurFile || isRemoved(m_unit));
}

bool LinuxLoginItem::writeUnit() {
    const std::optional<std::string> text = LoginUnit::textFor(m_executable);
    return text && isProgram(m_executable) && m_files.replace(m_unit, *text);
}

bool LinuxLoginItem::linkUnit() {
    if (kindOf(m_link)) {
        return kindOf(m_link) == S_IFLNK;
    }
    LinuxMissingFolders folders(m_link);
    const auto location = folders.made() ? locate(m_link) : std::nullopt;
    const std::string target = "../" + identifier + ".service";
    if (!location || ::symlinkat(target.c_str(), location->folder.get(), location->name.c_str()) != 0) {
        return false;
    }
    folders.keep();
    return synced(location->folder.get());
}

}  // namespace kestrune
