#pragma once

#include <functional>

namespace kestrune {

/// Makes sure that the program runs once a session. Main thread.
class SingleInstance {
public:
    enum class Outcome {
        first,
        otherCameForward,    ///< the program runs already and has been told, unless nobody asked for this start
        otherDoesNotAnswer,  ///< the program runs already but is too busy, or stopped
    };

    SingleInstance() = default;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    virtual ~SingleInstance() = default;

    /// Answers within two seconds which start this is, at once or from the event loop. From then on reopen is called
    /// whenever the user starts the program again while it runs. Once.
    virtual void acquire(std::function<void()> reopen, std::function<void(Outcome)> answer) = 0;
};

}  // namespace kestrune
