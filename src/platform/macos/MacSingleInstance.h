#pragma once

#include <memory>
#include <string>

#include "platform/SingleInstance.h"

namespace kestrune {

/// The first start holds a lock; every later one, such as a copy started from a terminal, tells it so and waits for its
/// answer. That the system starts a bundle only once is a help, not the rule: what it does instead of a second start
/// reaches the same reopen, through the application's delegate.
class MacSingleInstance final : public SingleInstance {
public:
    /// lockFile lies in a folder of the user's own. A start that only the system asked for leaves a program that runs
    /// already as it is: launchd starts an agent at once when it is made known.
    MacSingleInstance(std::string lockFile, bool isAskedFor);
    ~MacSingleInstance() override;

    void acquire(std::function<void()> reopen, std::function<void(Outcome)> answer) override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

}  // namespace kestrune
