#include "platform/WalkChildren.h"

#include <algorithm>
#include <utility>

namespace kestrune {

WalkChildren::WalkChildren(std::int64_t limit)
    : m_limit(limit), m_complete(limit), m_leastBytes(m_complete.leastBytes()) {
}

std::shared_ptr<WalkChild> WalkChildren::enter(std::string name) {
    std::shared_ptr<WalkChild> child(new WalkChild(std::move(name)), [this](WalkChild* done) { complete(done); });
    const std::scoped_lock guard(m_lock);
    m_held.push_back(child.get());
    return child;
}

void WalkChildren::complete(WalkChild* child) {
    const std::unique_ptr<WalkChild> owner(child);
    const std::scoped_lock guard(m_lock);
    m_held.erase(std::find(m_held.begin(), m_held.end(), child));
    if (child->holdsFiles()) {
        m_complete.offer({child->name(), child->bytes(), true});
        m_leastBytes.store(m_complete.leastBytes(), std::memory_order_relaxed);
    }
}

void WalkChildren::add(WalkChildFiles& batch) {
    if (batch.files.empty() && batch.otherFiles == 0) {
        return;
    }
    const std::scoped_lock guard(m_lock);
    for (WalkedItem& file : batch.files) {
        m_complete.offer(std::move(file));
    }
    m_complete.leaveOut(batch.otherFiles, batch.otherBytes);
    m_leastBytes.store(m_complete.leastBytes(), std::memory_order_relaxed);
    batch.files.clear();
    batch.otherFiles = batch.otherBytes = 0;
}

void WalkChildren::report(WalkProgress& progress) {
    LargestItems known(m_limit);
    {
        const std::scoped_lock guard(m_lock);
        known = m_complete;
        for (const WalkChild* child : m_held) {
            if (child->holdsFiles()) {
                known.offer({child->name(), child->bytes(), true});
            }
        }
    }
    progress.children = known.takeSorted();
    progress.otherChildren = known.otherItems();
    progress.otherBytes = known.otherBytes();
}

void WalkChildren::finish(TreeWalk& found) {
    const std::scoped_lock guard(m_lock);
    found.children = m_complete.takeSorted();
    found.otherChildren = m_complete.otherItems();
    found.otherBytes = m_complete.otherBytes();
}

}  // namespace kestrune
