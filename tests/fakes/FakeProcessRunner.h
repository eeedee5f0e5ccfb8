#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <utility>

#include "platform/ProcessRunner.h"

namespace kestrune {

/// Starts nothing: notes each call and answers with what the test prepared. An executable without an answer "could
/// not be started". Any thread, once the answers are in place.
class FakeProcessRunner final : public ProcessRunner {
public:
    struct Call {
        std::string executable;
        std::vector<std::string> arguments;
        ProcessLimits limits;
    };

    using Answer = std::function<ProcessResult(const Call& call)>;

    [[nodiscard]] ProcessResult run(const std::string& executable, const std::vector<std::string>& arguments,
                                    const ProcessLimits& limits = {}) override {
        Call call{executable, arguments, limits};
        Answer answer;
        {
            const std::scoped_lock lock(m_mutex);
            calls.push_back(call);
            const auto known = m_answers.find(executable);
            if (known != m_answers.end()) {
                answer = known->second;
            }
        }
        return answer ? answer(call) : ProcessResult{};
    }

    /// Every run of executable answers with result.
    void answer(const std::string& executable, ProcessResult result) {
        answer(executable, [result = std::move(result)](const Call&) { return result; });
    }

    /// Every run of executable answers with what compute returns.
    void answer(const std::string& executable, Answer compute) {
        const std::scoped_lock lock(m_mutex);
        m_answers[executable] = std::move(compute);
    }

    std::vector<Call> calls;  ///< in the order they came; read it when no other thread runs tools

private:
    std::mutex m_mutex;
    std::map<std::string, Answer> m_answers;
};

}  // namespace kestrune
