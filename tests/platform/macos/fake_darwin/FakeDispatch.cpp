#include "FakeDispatch.h"

#include <cstdlib>
#include <deque>
#include <functional>
#include <iostream>
#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Source : dispatch_source_s {
    dispatch_source_type_t type = nullptr;
    std::uintptr_t handle = 0;
    std::uintptr_t mask = 0;
    dispatch_function_t handler = nullptr;
    dispatch_function_t finalizer = nullptr;
    void* context = nullptr;
    int references = 1;
    bool isActive = false;
    bool isCancelled = false;
    bool isQueued = false;
    std::uintptr_t pending = 0;
    std::uintptr_t data = 0;
};

std::mutex queueMutex;
std::deque<std::function<void()>> mainQueue;
std::vector<Source*> liveSources;
bool refusesSources = false;

void enqueue(std::function<void()> work) {
    const std::lock_guard lock(queueMutex);
    mainQueue.push_back(std::move(work));
}

std::function<void()> nextWork() {
    const std::lock_guard lock(queueMutex);
    if (mainQueue.empty()) {
        return nullptr;
    }
    std::function<void()> work = std::move(mainQueue.front());
    mainQueue.pop_front();
    return work;
}

// The system ends the process as well.
[[noreturn]] void misuse(const char* what) {
    std::cerr << "dispatch: " << what << '\n';
    std::abort();
}

Source& sourceOf(dispatch_object_t object) {
    for (Source* const source : liveSources) {
        if (source == object) {
            return *source;
        }
    }
    misuse("no such object");
}

void dropReference(Source& source) {
    if (--source.references > 0) {
        return;
    }
    enqueue([gone = &source] {
        if (gone->finalizer != nullptr && gone->context != nullptr) {
            gone->finalizer(gone->context);
        }
        std::erase(liveSources, gone);
        delete gone;
    });
}

// The harshest order the system may choose: an event that was queued before the source was cancelled still arrives.
void deliver(Source& source) {
    source.isQueued = false;
    source.data = std::exchange(source.pending, 0);
    source.handler(source.context);
    dropReference(source);
}

bool takes(const Source& source, dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t data) {
    return source.type == type && source.handle == handle && (source.mask == 0 || (source.mask & data) != 0) &&
           source.isActive && !source.isCancelled;
}

}  // namespace

namespace kestrune::FakeDispatch {

void reset() {
    while (const std::function<void()> work = nextWork()) {
        work();
    }
    if (!liveSources.empty()) {
        misuse("a source was left behind");
    }
    refusesSources = false;
}

void refuseSources(bool refuse) {
    refusesSources = refuse;
}

std::size_t sources() {
    return liveSources.size();
}

std::size_t tell(dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t data) {
    std::size_t told = 0;
    for (Source* const source : liveSources) {
        if (!takes(*source, type, handle, data)) {
            continue;
        }
        ++told;
        source->pending |= source->mask == 0 ? data : data & source->mask;
        if (!std::exchange(source->isQueued, true)) {
            ++source->references;
            enqueue([source] { deliver(*source); });
        }
    }
    return told;
}

std::size_t runMainQueue() {
    std::size_t ran = 0;
    while (const std::function<void()> work = nextWork()) {
        work();
        ++ran;
    }
    return ran;
}

}  // namespace kestrune::FakeDispatch

extern "C" {

dispatch_queue_s _dispatch_main_q{};
const dispatch_source_type_s _dispatch_source_type_memorypressure{1};
const dispatch_source_type_s _dispatch_source_type_signal{2};

dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t mask,
                                         dispatch_queue_t queue) noexcept {
    if (refusesSources) {
        return nullptr;
    }
    if (queue != dispatch_get_main_queue()) {
        misuse("a source for another queue");
    }
    auto* source = new Source;
    source->type = type;
    source->handle = handle;
    source->mask = mask;
    liveSources.push_back(source);
    return source;
}

void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler) noexcept {
    sourceOf(source).handler = handler;
}

std::uintptr_t dispatch_source_get_data(dispatch_source_t source) noexcept {
    return sourceOf(source).data;
}

void dispatch_source_cancel(dispatch_source_t source) noexcept {
    sourceOf(source).isCancelled = true;
}

void dispatch_set_context(dispatch_object_t object, void* context) noexcept {
    sourceOf(object).context = context;
}

void dispatch_set_finalizer_f(dispatch_object_t object, dispatch_function_t finalizer) noexcept {
    sourceOf(object).finalizer = finalizer;
}

void dispatch_activate(dispatch_object_t object) noexcept {
    Source& source = sourceOf(object);
    if (source.handler == nullptr) {
        misuse("a source without a handler");
    }
    source.isActive = true;
}

void dispatch_release(dispatch_object_t object) noexcept {
    Source& source = sourceOf(object);
    if (!source.isActive) {
        misuse("release of an inactive object");
    }
    if (!source.isCancelled) {
        misuse("release of a source that may still tell something");
    }
    dropReference(source);
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) noexcept {
    if (queue != dispatch_get_main_queue()) {
        misuse("work for another queue");
    }
    enqueue([context, work] { work(context); });
}

}  // extern "C"
