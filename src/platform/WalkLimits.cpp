#include "platform/WalkLimits.h"

#include <algorithm>

namespace kestrune {

namespace {

int weight(WalkEnd end) {
    switch (end) {
        case WalkEnd::cancelled:
            return 3;
        case WalkEnd::entryLimit:
            return 2;
        case WalkEnd::timeLimit:
            return 1;
        case WalkEnd::finished:
            break;
    }
    return 0;
}

}  // namespace

std::size_t WalkLimits::grant(std::size_t entries) {
    askWhetherCancelled();
    const bool limited = m_request.entryLimit >= 0;
    if (limited && m_left.load(std::memory_order_relaxed) <= 0) {
        endWith(WalkEnd::entryLimit);
    } else if (!isOver() && m_request.timeIsUp && m_request.timeIsUp()) {
        endWith(WalkEnd::timeLimit);
    }
    if (isOver()) {
        return 0;
    }
    return limited ? reserve(entries) : entries;
}

void WalkLimits::askWhetherCancelled() {
    if (!isAbandoned() && m_request.cancelled && m_request.cancelled()) {
        endWith(WalkEnd::cancelled);
    }
}

void WalkLimits::askBeforeFolder() {
    askWhetherCancelled();
    if (!isOver() && m_request.timeIsUp && m_request.timeIsUp()) {
        endWith(WalkEnd::timeLimit);
    }
}

std::size_t WalkLimits::reserve(std::size_t entries) {
    std::int64_t left = m_left.load(std::memory_order_relaxed);
    while (left > 0) {
        const std::int64_t granted = std::min(left, static_cast<std::int64_t>(entries));
        if (m_left.compare_exchange_weak(left, left - granted, std::memory_order_relaxed)) {
            return static_cast<std::size_t>(granted);
        }
    }
    endWith(WalkEnd::entryLimit);
    return 0;
}

void WalkLimits::endWith(WalkEnd end) {
    WalkEnd known = m_end.load(std::memory_order_relaxed);
    while (weight(known) < weight(end) && !m_end.compare_exchange_weak(known, end, std::memory_order_relaxed)) {
    }
}

}  // namespace kestrune
