#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/RunningApplications.h"

namespace kestrune {

/// One application as one part of the desktop sees it.
struct SourcedApplication {
    std::int32_t pid = 0;
    /// Other processes that are known to be part of it. Where several sources list one of all these, it is one
    /// application, and the source that comes first decides its pid.
    std::vector<std::int32_t> otherPids;
    /// What may name its .desktop file, most trusted first: a file id ("org.gnome.Maps", with or without ".desktop"),
    /// an app_id, the WM_CLASS class and instance. Letter case does not matter.
    std::vector<std::string> hints;
    std::string name;  ///< a readable name for when no .desktop file fits; may be empty
    ActivationPolicy policy = ActivationPolicy::regular;

    bool operator==(const SourcedApplication&) const = default;
};

/// The application of process pid among applications; added at the end when it is not there yet.
[[nodiscard]] SourcedApplication& applicationOf(std::int32_t pid, std::vector<SourcedApplication>& applications);

/// Adds to hints those of more that are not there yet.
void addHints(const std::vector<std::string>& more, std::vector<std::string>& hints);

/// A part of the desktop that can list applications, tell which one is in front, or ask one to quit; perhaps not all
/// of it. LinuxRunningApplications merges what they say, so a source looks up no names and no icons, and need not know
/// whose process it is. A source that cannot work here answers nothing, quickly, and may be able to later: the desktop
/// comes and goes while the program runs. Nothing is opened before the first question. Main thread: no call takes
/// longer than a moment (300 ms at the very worst, when the desktop hangs).
class ApplicationSource {
public:
    using ActivationHandler = std::function<void(std::int32_t pid)>;
    using IsStillMeant = std::function<bool()>;

    ApplicationSource() = default;
    ApplicationSource(const ApplicationSource&) = delete;
    ApplicationSource& operator=(const ApplicationSource&) = delete;
    virtual ~ApplicationSource() = default;

    /// True when the desktop has this part now. The other operations may be called without asking.
    [[nodiscard]] virtual bool isAvailable() = 0;

    /// True when applications() holds every application with a window: later sources are not asked for theirs then.
    [[nodiscard]] virtual bool isComplete() = 0;

    /// In the desktop's order, each process once.
    [[nodiscard]] virtual std::vector<SourcedApplication> applications() = 0;

    /// The process that owns the window in front. Nothing when there is none, or none this source knows.
    [[nodiscard]] virtual std::optional<std::int32_t> frontmost() = 0;

    /// False when frontmost() never gives an answer here.
    [[nodiscard]] virtual bool tellsFrontmost() = 0;

    /// Calls handler whenever another application comes to the front, for as long as this object lives, also after the
    /// desktop was away for a while. Telling the same one twice is allowed. Once.
    virtual void observeActivation(ActivationHandler handler) = 0;

    /// Asks the process to quit the way its own close or quit command does, when this source has such a way. Right
    /// before something is sent, isStillMeant() must be true: the number may have passed on. True when a request was
    /// sent. Never a signal, and never something that ends a program that does not take part.
    [[nodiscard]] virtual bool close(std::int32_t pid, const IsStillMeant& isStillMeant) = 0;
};

/// The sources of this desktop, the most telling first: X11, sway and i3, KWin, systemd's scopes, the quit action of
/// programs on the session bus.
[[nodiscard]] std::vector<std::unique_ptr<ApplicationSource>> makeApplicationSources();

}  // namespace kestrune
