#pragma once

#include <dispatch/dispatch.h>

#include <cstddef>
#include <cstdint>

/// Drives the stand-in for the system's queues and sources. Nothing runs until the test runs the main queue. Work may
/// be put on the queue by any thread. One for all tests: reset before each.
namespace kestrune::FakeDispatch {

/// Ends with an error when a source of an earlier test is still there.
void reset();

/// From now on no source can be made, or it can again.
void refuseSources(bool refuse);

/// Sources that were made and whose finalizer has not run yet.
[[nodiscard]] std::size_t sources();

/// The system has something to tell to every active source of type for handle whose mask has a bit of data (a mask of
/// 0 takes everything): its handler is put on the main queue. Events that come before the handler ran are one.
/// Answers how many sources took it.
std::size_t tell(dispatch_source_type_t type, std::uintptr_t handle, std::uintptr_t data);

/// Runs what is on the main queue, and what that puts there; answers how many functions ran.
std::size_t runMainQueue();

}  // namespace kestrune::FakeDispatch
