#pragma once

#include <string>
#include <vector>

/// What the probe can do. Each verb prints its answer and returns the exit status.
namespace kestrune::probe {

using Arguments = std::vector<std::string>;

inline constexpr int succeeded = 0;
inline constexpr int failed = 1;
inline constexpr int misused = 2;  ///< unknown verb, or arguments that do not fit

int clean(const Arguments& arguments);
int allowed(const Arguments& arguments);
int size(const Arguments& arguments);
int scanTargets(const Arguments& arguments);
int scan(const Arguments& arguments);
int record(const Arguments& arguments);
int parse(const Arguments& arguments);
int setPreference(const Arguments& arguments);
int preference(const Arguments& arguments);
int runProcess(const Arguments& arguments);
int telemetry(const Arguments& arguments);
int applications(const Arguments& arguments);
int watchApplications(const Arguments& arguments);
int quitApplication(const Arguments& arguments);
int stop(const Arguments& arguments);
int list(const Arguments& arguments);
int feed(const Arguments& arguments);
int ports(const Arguments& arguments);

}  // namespace kestrune::probe
