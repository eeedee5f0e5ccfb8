#include "platform/macos/MacDispatchSource.h"

#include <utility>

namespace kestrune {

/// What the source's functions look at. It holds no reference to the source, so that neither keeps the other.
struct MacDispatchSource::Context {
    dispatch_source_t source;
    Handler handler;
    bool isOwned;  ///< the object that made the source is still there
};

MacDispatchSource::MacDispatchSource(dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t mask,
                                     Handler handler)
    : m_source(dispatch_source_create(type, handle, mask, dispatch_get_main_queue())) {
    if (m_source == nullptr) {
        return;
    }
    m_context = new Context{m_source, std::move(handler), true};
    dispatch_set_context(m_source, m_context);
    dispatch_set_finalizer_f(m_source, &MacDispatchSource::forget);
    dispatch_source_set_event_handler_f(m_source, &MacDispatchSource::tell);
    dispatch_activate(m_source);
}

MacDispatchSource::~MacDispatchSource() {
    if (m_source == nullptr) {
        return;
    }
    // The handler itself may be what ends this object: it stays until the source is finalized.
    m_context->isOwned = false;
    dispatch_source_cancel(m_source);
    dispatch_release(m_source);
}

void MacDispatchSource::tell(void* context) {
    const auto& own = *static_cast<const Context*>(context);
    if (own.isOwned) {
        own.handler(dispatch_source_get_data(own.source));
    }
}

void MacDispatchSource::forget(void* context) {
    delete static_cast<Context*>(context);
}

}  // namespace kestrune
