#include "platform/linux/LinuxProcessRunner.h"

#include "tests/platform/ProcessRunnerExpectations.h"

namespace kestrune {
namespace {

INSTANTIATE_TEST_SUITE_P(Linux, ProcessRunnerTest,
                         testing::Values(ProcessRunnerMaker{"Linux", []() -> std::unique_ptr<ProcessRunner> {
                                                                return std::make_unique<LinuxProcessRunner>();
                                                            }}));

}  // namespace
}  // namespace kestrune
