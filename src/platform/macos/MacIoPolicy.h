#pragma once

namespace kestrune {

/// Sets one policy of the calling thread (setiopolicy_np(3)) for as long as this lives. Where the system refuses,
/// nothing changes. Made and destroyed on the same thread.
class MacIoPolicy final {
public:
    MacIoPolicy(int type, int policy);
    MacIoPolicy(const MacIoPolicy&) = delete;
    MacIoPolicy& operator=(const MacIoPolicy&) = delete;
    ~MacIoPolicy();

private:
    const int m_type;
    int m_before = -1;  ///< negative: there is nothing to set back
};

/// Looking without leaving a trace: what lies in a cloud is not fetched, and the times of access stay as they are.
class MacQuietThread final {
public:
    MacQuietThread();

private:
    MacIoPolicy m_cloud;
    MacIoPolicy m_accessTimes;
};

}  // namespace kestrune
