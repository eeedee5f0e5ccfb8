#pragma once

#include <unistd.h>

#include <utility>

namespace kestrune {

/// Owns one file descriptor and closes it. Every open that goes into it must say O_CLOEXEC, so that no tool the
/// program starts inherits it.
class MacFileDescriptor final {
public:
    MacFileDescriptor() = default;

    /// Takes what open(2) and its kin return; a negative number owns nothing.
    explicit MacFileDescriptor(int descriptor) : m_descriptor(descriptor) {}

    MacFileDescriptor(MacFileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

    MacFileDescriptor& operator=(MacFileDescriptor&& other) noexcept {
        reset(std::exchange(other.m_descriptor, -1));
        return *this;
    }

    MacFileDescriptor(const MacFileDescriptor&) = delete;
    MacFileDescriptor& operator=(const MacFileDescriptor&) = delete;

    ~MacFileDescriptor() { reset(); }

    [[nodiscard]] int get() const { return m_descriptor; }

    [[nodiscard]] explicit operator bool() const { return m_descriptor >= 0; }

    /// Closes the owned descriptor, if any, and owns the given one instead. Not for the descriptor it already owns.
    void reset(int descriptor = -1) {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
        m_descriptor = descriptor;
    }

    /// Hands the descriptor to the caller, who closes it.
    [[nodiscard]] int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor = -1;
};

}  // namespace kestrune
