#pragma once

#include <dispatch/dispatch.h>

#include <cstdint>
#include <functional>

namespace kestrune {

/// A source of events of the system, told on the main queue for as long as this object lives. Main thread.
class MacDispatchSource final {
public:
    /// Gets what dispatch_source_get_data says of the event.
    using Handler = std::function<void(std::uintptr_t data)>;

    /// Tells nothing when the system cannot make the source.
    MacDispatchSource(dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t mask, Handler handler);
    ~MacDispatchSource();

    MacDispatchSource(const MacDispatchSource&) = delete;
    MacDispatchSource& operator=(const MacDispatchSource&) = delete;

    /// The system made the source.
    [[nodiscard]] bool isActive() const { return m_source != nullptr; }

private:
    struct Context;

    static void tell(void* context);
    static void forget(void* context);

    dispatch_source_t m_source;
    Context* m_context = nullptr;  ///< belongs to the source, whose last event may come after this object is gone
};

}  // namespace kestrune
