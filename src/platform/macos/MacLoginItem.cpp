#include "platform/macos/MacLoginItem.h"

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "platform/macos/LaunchAgent.h"

namespace kestrune {

namespace {

// launchd waits 20 seconds between SIGTERM and SIGKILL (ExitTimeOut in launchd.plist(5)). Were it this process that it
// ends, launchctl would wait for this process and the other way round: the file has to be gone well before.
constexpr ProcessLimits launchctlLimits{5, 6, 7};

bool exists(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0;
}

bool isProgram(const std::string& path) {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace

MacLoginItem::MacLoginItem(Program program, std::unique_ptr<LoginItemList> list, FileStore& files,
                           ProcessRunner& runner, std::unique_ptr<SerialQueue> queue)
    : m_program(std::move(program)),
      m_path(LaunchAgent::path(m_program.homeDirectory)),
      m_list(std::move(list)),
      m_files(files),
      m_runner(runner),
      m_queue(std::move(queue)) {
}

bool MacLoginItem::isRegistered() const {
    return m_list->isEnabled();
}

bool MacLoginItem::setRegistered(bool on) {
    return m_list->setRegistered(on);
}

bool MacLoginItem::isAgentInstalled() const {
    const std::scoped_lock guard(m_lock);
    return !m_isToBeRemoved && exists(m_path);
}

bool MacLoginItem::setAgentInstalled(bool on) {
    if (on) {
        return install();
    }
    uninstall();
    return true;
}

bool MacLoginItem::install() {
    const auto text = LaunchAgent::propertyList(m_program.executable);
    if (!text || !isProgram(m_program.executable)) {
        return false;
    }
    {
        const std::scoped_lock guard(m_lock);
        if (!m_files.replace(m_path, *text)) {
            return false;
        }
        m_isToBeRemoved = false;
    }
    m_queue->enqueue([this] { run(LaunchAgent::bootstrap(m_program.user, m_path)); });
    return true;
}

void MacLoginItem::uninstall() {
    {
        const std::scoped_lock guard(m_lock);
        m_isToBeRemoved = true;
    }
    if (m_program.isTheAgent) {
        removeFile();
        return;
    }
    m_queue->enqueue([this] {
        run(LaunchAgent::bootout(m_program.user));
        removeFile();
    });
}

void MacLoginItem::removeFile() {
    const std::scoped_lock guard(m_lock);
    // It may have been written anew since.
    if (std::exchange(m_isToBeRemoved, false)) {
        ::unlink(m_path.c_str());
    }
}

void MacLoginItem::run(const ToolCommand& command) {
    // Whether launchd knows the agent now is of no consequence: the file decides what happens at the next login.
    static_cast<void>(m_runner.run(command.executable, command.arguments, launchctlLimits));
}

}  // namespace kestrune
