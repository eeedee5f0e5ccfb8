// What the stand-ins of the queues' and sources' calls promise, held to whichever headers this file is compiled with.
#include <dispatch/dispatch.h>

#include <cstdint>
#include <type_traits>

static_assert(DISPATCH_MEMORYPRESSURE_NORMAL == 1);
static_assert(DISPATCH_MEMORYPRESSURE_WARN == 2);
static_assert(DISPATCH_MEMORYPRESSURE_CRITICAL == 4);
static_assert(std::is_same_v<dispatch_function_t, void (*)(void*)>);
static_assert(std::is_convertible_v<dispatch_source_t, dispatch_object_t>);
static_assert(std::is_convertible_v<decltype(dispatch_get_main_queue()), dispatch_queue_t>);
static_assert(std::is_same_v<decltype(DISPATCH_SOURCE_TYPE_MEMORYPRESSURE), dispatch_source_type_t>);
static_assert(std::is_same_v<decltype(DISPATCH_SOURCE_TYPE_SIGNAL), dispatch_source_type_t>);
static_assert(std::is_same_v<decltype(&dispatch_source_create),
                             dispatch_source_t (*)(dispatch_source_type_t, std::uintptr_t, std::uintptr_t,
                                                   dispatch_queue_t) noexcept>);
static_assert(std::is_same_v<decltype(&dispatch_source_set_event_handler_f),
                             void (*)(dispatch_source_t, dispatch_function_t) noexcept>);
static_assert(std::is_same_v<decltype(&dispatch_source_get_data), std::uintptr_t (*)(dispatch_source_t) noexcept>);
static_assert(std::is_same_v<decltype(&dispatch_source_cancel), void (*)(dispatch_source_t) noexcept>);
static_assert(std::is_same_v<decltype(&dispatch_set_context), void (*)(dispatch_object_t, void*) noexcept>);
static_assert(
    std::is_same_v<decltype(&dispatch_set_finalizer_f), void (*)(dispatch_object_t, dispatch_function_t) noexcept>);
static_assert(std::is_same_v<decltype(&dispatch_activate), void (*)(dispatch_object_t) noexcept>);
static_assert(std::is_same_v<decltype(&dispatch_release), void (*)(dispatch_object_t) noexcept>);
static_assert(
    std::is_same_v<decltype(&dispatch_async_f), void (*)(dispatch_queue_t, void*, dispatch_function_t) noexcept>);
