#pragma once

#include <array>
#include <string_view>

namespace kestrune {

enum class WorkspacePage { overview, storage, explorer, ai, apps, automation, activity, settings };

inline constexpr std::array<WorkspacePage, 8> allWorkspacePages{
    WorkspacePage::overview, WorkspacePage::storage,    WorkspacePage::explorer, WorkspacePage::ai,
    WorkspacePage::apps,     WorkspacePage::automation, WorkspacePage::activity, WorkspacePage::settings};

/// The page's title and identity.
[[nodiscard]] std::string_view rawValue(WorkspacePage page);

/// Whether the page shows running processes, which are listed anew when it opens and while it is on the screen.
[[nodiscard]] bool showsProcesses(WorkspacePage page);

/// The name of its sidebar symbol in the icon set.
[[nodiscard]] std::string_view symbol(WorkspacePage page);

}  // namespace kestrune
