#include "platform/macos/MacMemoryPressure.h"

#include <utility>

namespace kestrune {

namespace {

constexpr std::uintptr_t allLevels =
    DISPATCH_MEMORYPRESSURE_NORMAL | DISPATCH_MEMORYPRESSURE_WARN | DISPATCH_MEMORYPRESSURE_CRITICAL;

PressureLevels levelsOf(std::uintptr_t event) {
    return {(event & DISPATCH_MEMORYPRESSURE_NORMAL) != 0, (event & DISPATCH_MEMORYPRESSURE_WARN) != 0,
            (event & DISPATCH_MEMORYPRESSURE_CRITICAL) != 0};
}

}  // namespace

void MacMemoryPressure::start(Handler handler) {
    m_source.emplace(DISPATCH_SOURCE_TYPE_MEMORYPRESSURE, 0, allLevels,
                     [handler = std::move(handler)](std::uintptr_t event) { handler(levelsOf(event)); });
}

}  // namespace kestrune
