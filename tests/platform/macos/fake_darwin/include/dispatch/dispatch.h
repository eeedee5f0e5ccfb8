// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <cstdint>

struct dispatch_object_s {};

struct dispatch_queue_s : dispatch_object_s {};

struct dispatch_source_s : dispatch_object_s {};

struct dispatch_source_type_s {
    int identifier;
};

using dispatch_object_t = dispatch_object_s*;
using dispatch_queue_t = dispatch_queue_s*;
using dispatch_source_t = dispatch_source_s*;
using dispatch_source_type_t = const dispatch_source_type_s*;
using dispatch_function_t = void (*)(void*);

extern "C" {
extern dispatch_queue_s _dispatch_main_q;
extern const dispatch_source_type_s _dispatch_source_type_memorypressure;
extern const dispatch_source_type_s _dispatch_source_type_signal;
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t mask,
                                         dispatch_queue_t queue) noexcept;
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler) noexcept;
std::uintptr_t dispatch_source_get_data(dispatch_source_t source) noexcept;
void dispatch_source_cancel(dispatch_source_t source) noexcept;
void dispatch_set_context(dispatch_object_t object, void* context) noexcept;
void dispatch_set_finalizer_f(dispatch_object_t object, dispatch_function_t finalizer) noexcept;
void dispatch_activate(dispatch_object_t object) noexcept;
void dispatch_release(dispatch_object_t object) noexcept;
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) noexcept;
}

inline dispatch_queue_t dispatch_get_main_queue() {
    return &_dispatch_main_q;
}

#define DISPATCH_SOURCE_TYPE_MEMORYPRESSURE (&_dispatch_source_type_memorypressure)
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)
#define DISPATCH_MEMORYPRESSURE_NORMAL 0x01
#define DISPATCH_MEMORYPRESSURE_WARN 0x02
#define DISPATCH_MEMORYPRESSURE_CRITICAL 0x04
