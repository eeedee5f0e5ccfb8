#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <utility>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// Leaves this process no free descriptor, until release() gives one after the other back and the end all of them.
class TakenDescriptors final {
public:
    TakenDescriptors() {
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &m_before), 0);
        const rlimit few = {64, m_before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        for (;;) {
            LinuxFileDescriptor next(::open("/dev/null", O_RDONLY | O_CLOEXEC));
            if (!next) {
                break;
            }
            m_taken.push_back(std::move(next));
        }
    }

    TakenDescriptors(const TakenDescriptors&) = delete;
    TakenDescriptors& operator=(const TakenDescriptors&) = delete;

    ~TakenDescriptors() {
        m_taken.clear();
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &m_before), 0);
    }

    /// Gives one back; false when there is none left.
    bool release() {
        if (m_taken.empty()) {
            return false;
        }
        m_taken.pop_back();
        return true;
    }

private:
    rlimit m_before = {};
    std::vector<LinuxFileDescriptor> m_taken;
};

}  // namespace kestrune
