#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// Whether an application shows itself to the user.
enum class ActivationPolicy {
    regular,    ///< has windows of its own and a place among the desktop's applications
    accessory,  ///< an agent, an applet, a panel
};

/// An application of this user as it was when the system was asked. processIdentifier and startTime together stay the
/// same process for good; the number alone may be handed out again.
struct RunningApplication {
    std::int32_t processIdentifier = 0;
    std::uint64_t startTime = 0;         ///< in the system's own unit; 0 where it does not say
    std::string executable;              ///< what it ran then, as ProcessRecord::command; empty when unknown
    std::string localizedName;           ///< as the desktop shows it; may be empty
    std::string bundleIdentifier;        ///< "org.mozilla.firefox"; empty when it has none
    std::vector<std::string> iconNames;  ///< what the desktop may call its icon, best first; see iconOf()
    ActivationPolicy activationPolicy = ActivationPolicy::accessory;

    bool operator==(const RunningApplication&) const = default;
};

/// An application's own picture: in a file, or as it is.
struct ApplicationIcon {
    std::string path;                        ///< absolute path of an SVG or PNG file; empty when it is in none
    std::shared_ptr<const std::string> png;  ///< what a PNG file would hold; null when there is none

    [[nodiscard]] bool isEmpty() const { return path.empty() && !png; }

    bool operator==(const ApplicationIcon&) const = default;
};

/// The applications of this user and the polite way of ending them. Main thread.
class RunningApplications {
public:
    using ActivationHandler = std::function<void(const RunningApplication&)>;

    RunningApplications() = default;
    RunningApplications(const RunningApplications&) = delete;
    RunningApplications& operator=(const RunningApplications&) = delete;
    virtual ~RunningApplications() = default;

    /// All of them, in the desktop's order, each process once; this program too when it shows a window.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;

    /// The application in front, perhaps this program itself; nothing when there is none or the desktop hides it.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// The application with this process identifier now.
    [[nodiscard]] virtual std::optional<RunningApplication> application(std::int32_t processIdentifier) = 0;

    /// The application's icon; empty when there is none. It is looked for at the first question and kept, so that an
    /// application nobody looks at costs nothing; it need not run any more.
    [[nodiscard]] virtual ApplicationIcon iconOf(const RunningApplication& application) = 0;

    /// The names the desktop gives the program with this executable (as ProcessRecord::command), and those it showed
    /// its windows under so far: what a process without a window belongs to. None is empty; most programs have none,
    /// and interpreters never. Cheap enough for every row.
    [[nodiscard]] virtual std::vector<std::string> namesOfProgram(const std::string& executable) = 0;

    /// False on a desktop that does not tell which application is in front.
    [[nodiscard]] virtual bool tellsFrontmost() = 0;

    /// Calls handler each time another application comes to the front, once for each change, for as long as this
    /// object lives. One handler at most; once.
    virtual void observeActivation(ActivationHandler handler) = 0;

    /// True once that very process has ended, whoever has its number now, or runs another program.
    [[nodiscard]] virtual bool isTerminated(const RunningApplication& application) = 0;

    /// Asks the application to quit the way its own close or quit command does, so that it can ask about unsaved work.
    /// True when the request was delivered. False when the application has no such way, or is not that process or
    /// program any more: nothing else is tried then, and no signal is ever sent.
    [[nodiscard]] virtual bool terminate(const RunningApplication& application) = 0;

    /// Ends that very process at once, without asking it. True when it was told to end. False when it is another
    /// process, user or program by now, when its executable is unknown, and for identifiers below 2.
    [[nodiscard]] virtual bool forceTerminate(const RunningApplication& application) = 0;
};

}  // namespace kestrune
