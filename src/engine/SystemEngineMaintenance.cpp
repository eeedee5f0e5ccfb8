#include <algorithm>

#include "base/ByteCount.h"
#include "base/Localized.h"
#include "engine/SystemEngine.h"

namespace kestrune {

namespace {

const std::string reduceFXKey = "reduceFX";

}  // namespace

void SystemEngine::purgeMemory() {
    const ToolCommand purge = m_parts.systemTools.purgeMemory();
    tell(runPrivileged(purge.executable, purge.arguments)
             ? localized("Inactive memory cleared!")
             : localized("Couldn't purge memory · admin privileges were declined"));
}

std::int64_t SystemEngine::freePurgeableDisk() {
    const std::int64_t before = freeDiskBytes();
    const bool succeeded = run(m_parts.systemTools.thinLocalSnapshots()).status == 0;
    const std::int64_t gained = freeDiskBytes() - before;
    if (!succeeded) {
        tell(localized("Couldn't thin local snapshots (Time Machine may be busy)"));
    } else if (gained > 0) {
        tell(localized("Freed %1 of purgeable space", {formatByteCount(gained)}));
    } else {
        tell(localized("No local snapshots to thin · nothing purgeable right now"));
    }
    return std::max<std::int64_t>(gained, 0);
}

void SystemEngine::emptyTrash() {
    const bool succeeded = run(m_parts.systemTools.emptyTrash()).status == 0;
    // Some tools report success and leave everything where it is.
    const bool emptied = succeeded && m_parts.trash.isEmpty(m_parts.homeDirectory).value_or(true);
    tell(emptied ? localized("Trash emptied!") : localized("Couldn't empty Trash (Finder may have declined)"));
}

void SystemEngine::flushDNS() {
    for (const ToolCommand& tool : m_parts.systemTools.flushNameCache()) {
        run(tool);
    }
    tell(localized("DNS cache flushed!"));
}

void SystemEngine::restartFinder() {
    run(m_parts.systemTools.restartFileManager());
    tell(localized("Finder restarted!"));
}

void SystemEngine::toggleAnimations() {
    setReduceFX(!reduceFX());
    for (const ToolCommand& tool : m_parts.systemTools.reduceAnimations(reduceFX())) {
        run(tool);
    }
    tell(reduceFX() ? localized("Animations reduced · restart apps to see effect")
                    : localized("Animations restored · restart apps to see effect"));
}

bool SystemEngine::reduceFX() const {
    return m_parts.preferences.boolean(reduceFXKey).value_or(false);
}

bool SystemEngine::setReduceFX(bool reduce) {
    return m_parts.preferences.setBoolean(reduceFXKey, reduce);
}

std::int64_t SystemEngine::clearUserCaches() {
    return 0;
}

}  // namespace kestrune
