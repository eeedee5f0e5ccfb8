#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "base/SerialQueue.h"
#include "platform/FileStore.h"
#include "platform/LoginItem.h"
#include "platform/ProcessRunner.h"
#include "platform/SystemTools.h"
#include "platform/macos/LoginItemList.h"

namespace kestrune {

/// The system's list of login items, with a launch agent of the user's own as the fallback.
///
/// The agent's property list is written at once. launchctl, which may take seconds, runs on a queue of its own: after
/// the file was written, and before it is removed. Meanwhile the agent counts as what was asked for last.
///
/// An agent that is forgotten is also ended, by SIGTERM and some time later by SIGKILL. Where that is this very
/// process, the file alone goes, so that nothing else the program does is cut short; launchd forgets the agent when
/// the user logs out.
class MacLoginItem final : public LoginItem {
public:
    struct Program {
        std::string homeDirectory;
        std::string executable;  ///< the absolute path of its file
        std::uint32_t user = 0;
        bool isTheAgent = false;  ///< launchd started this process for the agent
    };

    /// files and runner outlive this object.
    MacLoginItem(Program program, std::unique_ptr<LoginItemList> list, FileStore& files, ProcessRunner& runner,
                 std::unique_ptr<SerialQueue> queue);

    [[nodiscard]] bool isRegistered() const override;
    bool setRegistered(bool on) override;
    [[nodiscard]] bool isAgentInstalled() const override;

    /// A file that later cannot be removed is not reported.
    bool setAgentInstalled(bool on) override;

private:
    [[nodiscard]] bool install();
    void uninstall();
    void removeFile();
    void run(const ToolCommand& command);

    const Program m_program;
    const std::string m_path;
    const std::unique_ptr<LoginItemList> m_list;
    FileStore& m_files;
    ProcessRunner& m_runner;
    mutable std::mutex m_lock;
    bool m_isToBeRemoved = false;  ///< the file is still there, but was asked to go

    /// Last: its jobs use what is above, and are done when it is gone.
    const std::unique_ptr<SerialQueue> m_queue;
};

}  // namespace kestrune
